// The filter's steps, told a second time, with the calls that each of them makes.
#include "tests/faults/expected_run.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "tests/faults/faulted_run.h"
#include "tests/faults/played_printer.h"
#include "tests/oracle/run_text.h"

namespace {

constexpr char const* NO_ANSWER = "CUPS_SC_STATUS_TIMEOUT(3)";
constexpr std::string_view JOB_STATUS{"\033V10\0\0", 6};

// How an exchange ended: the line of a failed drain, and the line of what failed it.
struct Exchange {
  std::string failed_drain{};
  std::string failure{};
};

class Teller {
public:
  Teller(Fault const& planned, bool is_harmless) : fault_(planned), harmless_(is_harmless) {}

  ExpectedRun tell()
  {
    run_.exit_status = tell_filter();
    Exchange const job = exchange(std::string(JOB_STATUS), 1);
    log("DEBUG: get_job_status() START\n" + dump_text("[CMD]", std::string(JOB_STATUS))
        + job.failed_drain
        + (job.failure.empty() ? dump_text("[STS]", job_status_reply()) : job.failure)
        + "DEBUG: get_job_status() END\n");
    return run_;
  }

private:
  void log(std::string const& text) { run_.messages += text; }

  // Counts the call; whether its step fails with it.
  bool fails(Call call) { return fault_.hits(call, count_of(counts_, call)++) && !harmless_; }

  bool request_is_answered()
  {
    constexpr Call CALLS_OF_A_REQUEST[] = {Call::RequestWait, Call::RequestWrite, Call::AnswerWait,
                                           Call::AnswerRead};
    return std::ranges::none_of(CALLS_OF_A_REQUEST, [this](Call call) { return fails(call); });
  }

  Exchange exchange(std::string const& command, std::size_t pieces)
  {
    std::string const result = std::to_string(fault_.result);
    if (fails(Call::DeviceWrite))
      return {.failure = "DEBUG: fwrite() failed. ret=" + result + "\n"};
    if (fails(Call::DeviceFlush)) return {.failure = "DEBUG: fflush() failed.\n"};
    run_.device += command;
    Exchange ended;
    if (!request_is_answered()) ended.failed_drain = failed_drain_text(NO_ANSWER);
    for (std::size_t i = 0; i < pieces && ended.failure.empty(); ++i) {
      // Whatever a wait ends with, the read after it finds nothing.
      if (fails(Call::ReplyWait))
        ended.failure = "DEBUG: cupsBackChannelRead() failed. ret=-1\n";
      else if (fails(Call::ReplyRead))
        ended.failure = "DEBUG: cupsBackChannelRead() failed. ret=" + result + "\n";
    }
    return ended;
  }

  int tell_filter()
  {
    if (fails(Call::FileOpen)) {
      log(std::string("ERROR: Unable to open command file - : ") + strerror(fault_.error) + "\n");
      return 1;
    }
    bool const bidirectional = request_is_answered();
    if (!bidirectional) log(not_bidirectional_text(NO_ANSWER));
    Exchange const wake_up = exchange("\033EWU", 0);
    log(wake_up_text(wake_up.failed_drain + wake_up.failure));
    if (!wake_up.failure.empty()) return 1;

    if (fails(Call::StandardInput) || fails(Call::FileRead)) return 0;
    log(directive_text("ReportLevels", 1));
    tell_levels(bidirectional);
    if (fails(Call::FileRead)) return 0;
    log(directive_text("ReportStatus", COMMENTS + 2));
    log(bidirectional ? query_reasons() : unavailable_reasons_text());
    return 0;
  }

  void tell_levels(bool bidirectional)
  {
    std::string const reasons = bidirectional ? query_reasons() : "";
    log(bidirectional && available_ ? level_report_text(StatusReply{}.ribbon(), 40)
                                    : unavailable_levels_text());
    log(reasons);
  }

  // One retrying query; returns the reasons that follow from it, and sets available_.
  std::string query_reasons()
  {
    std::string attempts;
    std::string reasons;
    int asleep = 0;
    while (reasons.empty()) reasons = attempt(attempts, asleep);
    log(retry_text(attempts));
    return reasons;
  }

  // Nothing as long as the printer sleeps.
  std::string attempt(std::string& attempts, int& asleep)
  {
    std::size_t const number = replies_;
    std::size_t const heard = run_.device.size();
    Exchange const query = exchange("\033V21", number == 2 ? 2 : 1);
    if (run_.device.size() > heard) ++replies_;
    available_ = query.failure.empty();
    if (!available_) {
      attempts += failed_attempt_text(failed_query_text(query.failure, query.failed_drain));
      return unavailable_reasons_text();
    }
    StatusReply const reply = status_reply(number);
    bool const awake = number != 0;
    if (!awake) ++asleep;
    attempts +=
        attempt_text(query_text(reply.bytes(), query.failed_drain), reply.info_text(),
                     (awake ? "fulfilled(" : "retrying(") + std::to_string(asleep) + "/60)");
    if (!awake) return "";
    if (number != 2) return reasons_text();
    return "DEBUG: encountered undefined error number (0x01,0x02,0x03)\n" + reasons_text(23);
  }

  Fault fault_;
  bool harmless_;
  CallCounts counts_{};
  ExpectedRun run_{};
  bool available_ = false;
  std::size_t replies_ = 0;  // that the printer had to give
};

}  // namespace

ExpectedRun expected_run(Fault const& fault, bool harmless)
{
  return Teller(fault, harmless).tell();
}
