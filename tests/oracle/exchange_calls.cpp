// The calls of an exchange with the printer.
#include "tests/oracle/exchange_calls.h"

#include "tests/harness/hex.h"
#include "tests/oracle/run_text.h"

std::string write_call(std::string const& command)
{
  return "> fwrite(1 x " + std::to_string(command.size()) + ": " + hex(command) + ")\n";
}

std::string read_call(std::size_t room)
{
  return "> cupsBackChannelRead(room for " + std::to_string(room) + ", 1.000 s)\n";
}

std::string status_query_with_calls(std::string const& reply)
{
  return failed_status_query_with_calls(FLUSH_CALL + DRAIN_CALL + read_call(512)
                                        + dump_text("[STS]", reply));
}

std::string failed_status_query_with_calls(std::string const& rest)
{
  return command_start_text("get_printer_info", "\033V21") + write_call("\033V21") + rest
         + end_text("get_printer_info");
}
