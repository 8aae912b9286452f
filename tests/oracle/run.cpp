// Probe, wake-up, directives: the steps in their order, each with the messages it has to leave.
#include "tests/oracle/run.h"

#include "tests/oracle/run_text.h"

namespace {

using Kind = Call::Kind;
using Reply = std::optional<std::string>;

constexpr long ROOM = 512;
constexpr long DRAIN_OUTPUT = 2;
constexpr long GET_BIDI = 3;
constexpr long OK = 1;

bool tell_sending(Surroundings const& outside, std::string_view command)
{
  Outcome const write = outside.meet({.kind = Kind::Write, .text = command, .number = 1});
  if (write.result != static_cast<long>(command.size())) {
    outside.hear(failed_write_text(write.result));
    return false;
  }
  if (outside.meet({.kind = Kind::Flush}).result == 0) return true;
  outside.hear(failed_flush_text());
  return false;
}

void tell_draining(Surroundings const& outside)
{
  Outcome const drain =
      outside.meet({.kind = Kind::Request, .number = DRAIN_OUTPUT, .room = ROOM, .timeout = 5});
  if (drain.result != OK) outside.hear(failed_drain_text(side_channel_status_text(drain.result)));
}

Reply tell_reply(Surroundings const& outside, std::size_t minimum)
{
  std::string reply;
  while (reply.size() < minimum) {
    Outcome const read = outside.meet(
        {.kind = Kind::Read, .room = ROOM - static_cast<long>(reply.size()), .timeout = 1});
    if (read.result <= 0) {
      outside.hear(failed_read_text(read.result));
      return std::nullopt;
    }
    reply += read.text;
  }
  outside.hear(dump_text("[STS]", reply));
  return reply;
}

Reply tell_steps(Surroundings const& outside, Use const& use)
{
  outside.hear(dump_text("[CMD]", use.command));
  if (!tell_sending(outside, use.command)) return std::nullopt;
  tell_draining(outside);
  if (use.pause > 0) outside.meet({.kind = Kind::Pause, .number = use.pause});
  return use.minimum > 0 ? tell_reply(outside, use.minimum) : "";
}

Reply tell_attempts(Surroundings const& outside)
{
  for (int failures = 0;;) {
    Reply reply = tell_printer_status(outside);
    if (!reply) {
      outside.hear(failed_attempt_text(""));
      return std::nullopt;
    }

    StatusReply const status = read_status(*reply);
    bool const awake = status.is_awake();
    if (!awake) ++failures;
    std::string const word = awake ? "fulfilled" : failures > 60 ? "expired" : "retrying";
    outside.hear(
        attempt_text("", status.info_text(), word + "(" + std::to_string(failures) + "/60)"));
    if (awake) return reply;
    if (failures > 60) {
      outside.hear(retry_over_text());
      return std::nullopt;
    }
    outside.meet({.kind = Kind::Sleep, .number = 1});
  }
}

bool tell_probe(Surroundings const& outside)
{
  Outcome const probe =
      outside.meet({.kind = Kind::Request, .number = GET_BIDI, .room = ROOM, .timeout = 30});
  if (probe.result == OK && probe.text == "\x01") return true;
  outside.hear(not_bidirectional_text(side_channel_status_text(probe.result)));
  return false;
}

std::string levels_report(Reply const& reply)
{
  if (!reply) return unavailable_levels_text();
  Ribbon const ribbon = read_status(*reply).ribbon();
  return level_report_text(ribbon, level_of(ribbon));
}

std::string reason_report(Reply const& reply)
{
  return reply ? reason_report_text(read_status(*reply).state_code()) : unavailable_reasons_text();
}

// Not by the locale's rules, which a directive's letters do not follow.
std::string lower_case(std::string_view directive)
{
  std::string text(directive);
  for (char& letter : text)
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter + 'a' - 'A');
  return text;
}

// In whatever letters it is written.
void tell_directive(Surroundings const& outside, std::string_view directive, bool bidirectional)
{
  std::string const name = lower_case(directive);
  if (name != "reportlevels" && name != "reportstatus") return;
  Reply const reply = bidirectional ? tell_retried_printer_status(outside) : Reply();
  if (name == "reportlevels") outside.hear(levels_report(reply));
  if (name == "reportstatus" || bidirectional) outside.hear(reason_report(reply));
}

}  // namespace

Reply tell_exchange(Surroundings const& outside, Use const& use)
{
  outside.hear(start_text(use.name));
  Reply reply = tell_steps(outside, use);
  outside.hear(end_text(use.name));
  return reply;
}

bool tell_wake_up(Surroundings const& outside)
{
  return tell_exchange(outside, {"wr_esc_wakeup", {"\033EWU", 4}, 0, 500'000}).has_value();
}

Reply tell_printer_status(Surroundings const& outside)
{
  return tell_exchange(outside, {"get_printer_info", {"\033V21", 4}, 192, 0});
}

Reply tell_job_status(Surroundings const& outside)
{
  return tell_exchange(outside, {"get_job_status", {"\033V10\0\0", 6}, 20, 0});
}

Reply tell_retried_printer_status(Surroundings const& outside)
{
  outside.hear(start_text("get_printer_info_retry"));
  Reply reply = tell_attempts(outside);
  outside.hear(end_text("get_printer_info_retry"));
  return reply;
}

int tell_run(Surroundings const& outside)
{
  bool const bidirectional = tell_probe(outside);
  if (!tell_wake_up(outside)) return 1;
  for (;;) {
    Outcome const directive = outside.meet({.kind = Kind::Directive, .room = 1024});
    if (directive.result == 0) return 0;
    std::string const name(directive.text);
    outside.hear(directive_text(name, directive.result));
    tell_directive(outside, name, bidirectional);
  }
}
