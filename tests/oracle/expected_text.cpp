// The rules for the texts of a run, written a second time.
#include "tests/oracle/expected_text.h"

#include <array>

namespace {

constexpr std::array REASONS{"0001", "0002", "0003", "0004", "0005", "0006", "0007",
                             "0008", "0009", "0010", "0011", "0012", "0013", "0014",
                             "0018", "0020", "0021", "0022", "0023"};

constexpr char const* DRAIN_EVENTS = "request 02 00 00 00\nwait 5.000000 s on 4\n";

std::string bracketed(std::string const& function, std::string const& text)
{
  return "DEBUG: " + function + "() START\n" + text + "DEBUG: " + function + "() END\n";
}

}  // namespace

std::string not_bidirectional_text(std::string const& status)
{
  return "DEBUG: Unable to retrieve supply status from printer - nobidirectional I/O available! "
         + status + "\n";
}

std::string failed_drain_text(std::string const& status)
{
  return "DEBUG: CUPS_SC_CMD_DRAIN_OUTPUT=" + status + "\n";
}

std::string unnamed_status(int byte)
{
  return "UNKNOWN(" + std::to_string(static_cast<char>(byte)) + ")";
}

std::string dump_text(std::string const& label, std::string const& bytes)
{
  std::string text = "DEBUG: " + label + " size=" + std::to_string(bytes.size());
  for (size_t i = 0; i < bytes.size(); ++i) {
    if (i % 16 == 0) text += "\nDEBUG: " + label + formatted(" %04x:", static_cast<unsigned>(i));
    text += formatted(" %02x", static_cast<unsigned char>(bytes[i]));
  }
  return text + "\n";
}

std::string wake_up_text(std::string const& failure)
{
  return bracketed("wr_esc_wakeup", dump_text("[CMD]", "\033EWU") + failure);
}

std::string directive_text(std::string const& name, int line)
{
  return "DEBUG: ====> command=[" + name + "] linenum=" + std::to_string(line) + "\n";
}

std::string query_text(std::string const& reply, std::string const& failed_drain)
{
  return bracketed("get_printer_info",
                   dump_text("[CMD]", "\033V21") + failed_drain + dump_text("[STS]", reply));
}

std::string failed_query_text(std::string const& failure, std::string const& failed_drain)
{
  return bracketed("get_printer_info", dump_text("[CMD]", "\033V21") + failed_drain + failure);
}

std::string attempt_text(std::string const& query, std::string const& info,
                         std::string const& wake_up)
{
  return query + "DEBUG: printer_info=[" + info + "]\nDEBUG: #retry_status=[wake_up=" + wake_up
         + "]\n";
}

std::string failed_attempt_text(std::string const& failed_query)
{
  return failed_query + "DEBUG: printer_info=[UNAVAILABLE]\n";
}

std::string retry_text(std::string const& attempts)
{
  return bracketed("get_printer_info_retry", attempts);
}

std::string awake_text(StatusReply const& reply, std::string const& error_info)
{
  return retry_text(
      attempt_text(query_text(reply.bytes()), reply.info_text(error_info), "fulfilled(0/60)"));
}

std::string no_reply_text(std::string const& read_result, std::string const& failed_drain)
{
  return retry_text(failed_attempt_text(failed_query_text(
      "DEBUG: cupsBackChannelRead() failed. ret=" + read_result + "\n", failed_drain)));
}

std::string reasons_text(std::string const& reason)
{
  std::string text = reason.empty() ? "" : "STATE: +com.velmo-error" + reason + "\n";
  for (char const* other : REASONS)
    if (other != reason) text += std::string("STATE: -com.velmo-error") + other + "\n";
  return text;
}

std::string levels_report_text(std::string const& log, std::string const& level,
                               std::string const& message, std::string const& name)
{
  return "DEBUG: [ReportLevels] " + log + "\nATTR: marker-colors=#00FF00\nATTR: marker-levels="
         + level + "\nATTR: marker-message=\"" + message + "\"\nATTR: marker-names=\"" + name
         + "\"\nATTR: marker-types=ink-ribbon\n";
}

std::string unavailable_levels_text()
{
  return levels_report_text("UNAVAILABLE", "-2", " ", "Ribbon Type: 00");
}

std::string probe_events() { return "request 03 00 00 00\nwait 30.000000 s on 4\n"; }

std::string wake_up_events()
{
  return std::string("device 1b 45 57 55\n") + DRAIN_EVENTS + "usleep 500000\n";
}

std::string query_events(int reads)
{
  return std::string("device 1b 56 32 31\n") + DRAIN_EVENTS
         + repeated(reads, "wait 1.000000 s on 3\n");
}

std::string exit_event(int status) { return "exit " + std::to_string(status) + "\n"; }

std::string repeated(int times, std::string const& text)
{
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}
