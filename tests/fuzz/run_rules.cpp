// Probe, wake-up, directives: the order of a run and what each directive reports.
#include "tests/fuzz/run_rules.h"

#include <optional>

#include "tests/oracle/levels.h"
#include "tests/oracle/reasons.h"
#include "tests/fuzz/exchange_rules.h"
#include "tests/fuzz/require.h"
#include "tests/fuzz/status_rules.h"

namespace {

using Kind = Event::Kind;
using Reply = std::optional<std::string>;

bool walk_probe(Conversation& conversation)
{
  Event const& probe = conversation.expect(Kind::Request);
  require(probe.argument == 3 && probe.timeout == 30.0, "the probe has 30 seconds");
  if (probe.result == 1 && probe.text == "\x01") return true;
  conversation.expect_message(
      "DEBUG: Unable to retrieve supply status from printer - nobidirectional I/O available! "
      + side_channel_status_text(probe.result) + "\n");
  return false;
}

std::string ribbon_report(Reply const& reply)
{
  std::string text;
  if (reply)
    append_ribbon_report(text, read_status(*reply));
  else
    append_unavailable_level_report(text);
  return text;
}

std::string state_report(Reply const& reply)
{
  std::string text;
  if (reply)
    append_state_report(text, read_status(*reply));
  else
    append_state_lines(text, UNKNOWN_REASON);
  return text;
}

std::string lower_case(std::string text)
{
  for (char& letter : text)
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter + 'a' - 'A');
  return text;
}

void walk_directive(Conversation& conversation, Event const& directive, bool bidirectional)
{
  require(directive.result == 1024, "room for the directive");
  conversation.expect_message("DEBUG: ====> command=[" + directive.text
                              + "] linenum=" + std::to_string(directive.argument) + "\n");
  std::string const name = lower_case(directive.text);
  if (name != "reportlevels" && name != "reportstatus") return;
  Reply const reply = bidirectional ? walk_retried_printer_status(conversation) : Reply();
  if (name == "reportlevels") conversation.expect_message(ribbon_report(reply));
  if (name == "reportstatus" || bidirectional) conversation.expect_message(state_report(reply));
}

}  // namespace

int walk_run(Conversation& conversation)
{
  bool const bidirectional = walk_probe(conversation);
  bool const awake = walk_wake_up(conversation);
  if (awake)
    for (;;) {
      Event const& directive = conversation.expect(Kind::Directive);
      if (directive.result == 0) break;
      walk_directive(conversation, directive, bidirectional);
    }
  conversation.expect_end();
  return awake ? 0 : 1;
}
