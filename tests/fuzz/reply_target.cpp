// Any bytes as a status reply, and everything that is derived from them.
#include <algorithm>
#include <cstdint>
#include <vector>

#include "protocol/printer_info.h"
#include "report/printer_levels_report.h"
#include "report/printer_state_report.h"
#include "tests/harness/collected_messages.h"
#include "tests/harness/require.h"
#include "tests/oracle/levels.h"
#include "tests/oracle/reasons.h"
#include "tests/oracle/status_reply.h"

namespace {

// All that parsing reads. Shorter inputs are filled up; what lies beyond is out of bounds.
constexpr std::size_t READ_BYTES = 152;

void check_predicates(PrinterInfo const& info, StatusReply const& status)
{
  require(info.isAvailable(), "a parsed reply is available");
  require(info.isWakeUp() == status.is_awake(), "awake");
  require(info.isMechGood() == status.is_mech_good(), "mechanism good");
  require(info.isMemoryFree() == status.is_memory_free(), "memory free");
}

void check_state(PrinterState const& state, unsigned code)
{
  unsigned char const same[3] = {static_cast<unsigned char>(code >> 16),
                                 static_cast<unsigned char>(code >> 8),
                                 static_cast<unsigned char>(code)};
  unsigned char const other[3] = {same[0], same[1], static_cast<unsigned char>(~same[2])};
  require(state == &same && !(state != &same), "a state equals its own code");
  require(state != &other && !(state == &other), "a state equals no other code");
  PrinterState const same_again = state;
  require(state == same_again && state != PrinterState::Unavailable(), "an available state");
  require((state == PrinterState::Good()) == (code == 0), "good is no error");
}

void check_reports(PrinterInfo const& info, StatusReply const& status)
{
  std::string expected;
  append_level_report(expected, status.ribbon(), level_of(status.ribbon()));
  append_reason_report(expected, status.state_code());
  collected_messages().clear();
  report_printer_levels(info.GetPrinterLevels());
  update_printer_state(info.GetPrinterState());
  require_equal(collected_messages(), expected);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
  std::vector<char> reply(data, data + size);
  reply.resize(std::max(size, READ_BYTES));
  PrinterInfo const info = PrinterInfo::Parse(reply.data());
  StatusReply const status = read_status({reply.data(), reply.size()});

  check_predicates(info, status);
  check_state(info.GetPrinterState(), status.state_code());
  require_equal(info.to_string(), status.info_text());
  check_reports(info, status);
  return 0;
}
