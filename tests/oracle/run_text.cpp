// The rules for the texts of a run, written a second time.
#include "tests/oracle/run_text.h"

#include "tests/harness/hex.h"

namespace {

constexpr char const* DRAIN_EVENTS = "request 02 00 00 00\nwait 5.000000 s on 4\n";

std::string bracketed(std::string const& function, std::string const& text)
{
  return start_text(function) + text + end_text(function);
}

}  // namespace

std::string side_channel_status_text(long status)
{
  static constexpr char const* NAMES[] = {
      "NONE",        "OK",          "IO_ERROR", "TIMEOUT",
      "NO_RESPONSE", "BAD_MESSAGE", "TOO_BIG",  "NOT_IMPLEMENTED"};
  bool const known = status >= 0 && status < 8;
  return (known ? std::string("CUPS_SC_STATUS_") + NAMES[status] : "UNKNOWN") + "("
         + std::to_string(status) + ")";
}

std::string answered_status_text(int byte)
{
  return side_channel_status_text(static_cast<char>(byte));
}

std::string not_bidirectional_text(std::string const& status)
{
  return "DEBUG: Unable to retrieve supply status from printer - nobidirectional I/O available! "
         + status + "\n";
}

std::string failed_drain_text(std::string const& status)
{
  return "DEBUG: CUPS_SC_CMD_DRAIN_OUTPUT=" + status + "\n";
}

std::string failed_write_text(long result)
{
  return "DEBUG: fwrite() failed. ret=" + std::to_string(result) + "\n";
}

std::string failed_flush_text() { return "DEBUG: fflush() failed.\n"; }

std::string failed_read_text(long result)
{
  return "DEBUG: cupsBackChannelRead() failed. ret=" + std::to_string(result) + "\n";
}

std::string dump_text(std::string_view label, std::string_view bytes)
{
  std::string const head = "DEBUG: " + std::string(label) + " ";
  std::string text = head + "size=" + std::to_string(bytes.size()) + "\n";
  if (bytes.empty()) text += head + "0000:\n";
  for (std::size_t offset = 0; offset < bytes.size(); offset += 16) {
    text += head;
    if (offset > 0xffff) text += std::to_string(offset >> 16);  // up to 9
    append_hex(text, static_cast<unsigned>(offset >> 8 & 0xff));
    append_hex(text, static_cast<unsigned>(offset & 0xff));
    text += ": " + hex(bytes.substr(offset, 16)) + "\n";
  }
  return text;
}

std::string start_text(std::string const& function) { return "DEBUG: " + function + "() START\n"; }

std::string end_text(std::string const& function) { return "DEBUG: " + function + "() END\n"; }

std::string command_start_text(std::string const& function, std::string const& command)
{
  return start_text(function) + dump_text("[CMD]", command);
}

std::string wake_up_text(std::string const& failure)
{
  return bracketed("wr_esc_wakeup", dump_text("[CMD]", "\033EWU") + failure);
}

std::string directive_text(std::string const& name, long line)
{
  return "DEBUG: ====> command=[" + name + "] linenum=" + std::to_string(line) + "\n";
}

std::string query_text(std::string const& reply, std::string const& failed_drain)
{
  return failed_query_text(dump_text("[STS]", reply), failed_drain);
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

std::string retry_over_text() { return "DEBUG: #retry over\n"; }

std::string awake_text(std::string const& reply, std::string const& failed_drain)
{
  return retry_text(attempt_text(query_text(reply, failed_drain), read_status(reply).info_text(),
                                 "fulfilled(0/60)"));
}

std::string awake_text(StatusReply const& reply, std::string const& failed_drain)
{
  return awake_text(reply.bytes(), failed_drain);
}

std::string no_reply_text(long read_result, std::string const& failed_drain)
{
  return retry_text(
      failed_attempt_text(failed_query_text(failed_read_text(read_result), failed_drain)));
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
