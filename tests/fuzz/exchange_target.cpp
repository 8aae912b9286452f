// Every use of the exchange over a hostile channel.
#include <cstdint>

#include "protocol/device_channel.h"
#include "protocol/queries.h"
#include "tests/harness/recording.h"
#include "tests/harness/require.h"
#include "tests/harness/scripted_calls.h"
#include "tests/oracle/run.h"
#include "tests/oracle/status_reply.h"

namespace {

void wake_up(Surroundings const& told)
{
  int const result = wr_esc_wakeup();
  require(result == (tell_wake_up(told) ? 0 : -1), "the result of the wake-up");
}

void check_info(PrinterInfo const& info, std::optional<std::string> const& reply)
{
  require_equal(info.to_string(), reply ? read_status(*reply).info_text() : "UNAVAILABLE");
}

void ask_status(Surroundings const& told)
{
  PrinterInfo const info = get_printer_info();
  check_info(info, tell_printer_status(told));
}

void ask_status_again_and_again(Surroundings const& told)
{
  PrinterInfo const info = get_printer_info_retry();
  check_info(info, tell_retried_printer_status(told));
}

void ask_job_status(Surroundings const& told)
{
  JobStatus const job = get_job_status();
  auto const reply = tell_job_status(told);
  require(job.isAvailable() == reply.has_value(), "available when the reply is complete");
  require(job.isReady() == (reply && is_job_ready(*reply)), "ready when the reply says so");
  require_equal(job.to_string(), reply ? job_text(*reply) : "UNAVAILABLE");
}

}  // namespace

// The first byte chooses the use, the rest is the script.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
  static constexpr void (*USES[])(Surroundings const&) = {
      wake_up, ask_status, ask_status_again_and_again, ask_job_status};
  if (size == 0) return 0;
  ScriptedCalls script({data + 1, size - 1});
  Recording recording;
  OutsideCalls const calls([&](Call const& call) {
    Outcome const outcome = script.meet(call);
    recording.note(call, outcome);
    return outcome;
  });
  USES[data[0] % 4]({[&](Call const& call) { return recording.expect_call(call); },
                     [&](std::string_view text) { recording.expect_message(text); }});
  recording.expect_end();
  return 0;
}
