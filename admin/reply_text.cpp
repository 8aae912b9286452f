// The printer's replies in words.
#include "admin/reply_text.h"

#include <cstdio>

#include "protocol/job_status.h"
#include "protocol/printer_info.h"
#include "report/printer_state_reasons.h"

namespace {

constexpr std::uint16_t COUNT_UNKNOWN = 0xffff;
constexpr std::uint8_t INK_SHEET_UNKNOWN = 0xff;

// The value of a field as the filter logs it: "power_state=0x01 ...".
std::string value_of(std::string const& info, std::string const& name)
{
  std::string const front = name + "=";
  std::size_t const from = info.find(front) + front.size();
  return info.substr(from, info.find(' ', from) - from);
}

std::string error_meaning(PrinterState const& state)
{
  if (state == PrinterState::InternalSupplyLow())
    return "no prints left, which hides the printer's own code";
  for (PrinterStateReason const& row : PRINTER_STATE_REASONS)
    if (state == &row.code) return row.reasons[0] ? row.reasons[0] : "no error";
  return std::string("a code that is not in the table, ") + UNDEFINED_ERROR_REASON;
}

std::string prints_meaning(PrinterLevels const& levels)
{
  if (levels.remaining_prints == COUNT_UNKNOWN || levels.total_prints == COUNT_UNKNOWN)
    return "a count that is not known";
  if (levels.total_prints == 0) return "no capacity, so no ribbon";
  return "prints left of the ribbon's";
}

std::string hex_byte(unsigned byte)
{
  char text[8];
  std::snprintf(text, sizeof text, "0x%02x", byte);
  return text;
}

std::string field(std::string const& name, std::string const& value, std::string const& meaning)
{
  char line[256];
  std::snprintf(line, sizeof line, "    %-15s %-15s %s\n", name.c_str(), value.c_str(),
                meaning.c_str());
  return line;
}

}  // namespace

std::string reply_text(std::string_view reply)
{
  PrinterInfo const info = PrinterInfo::Parse(reply.data());
  std::string const logged = info.to_string();
  PrinterState const state = info.GetPrinterState();
  PrinterLevels const levels = info.GetPrinterLevels();
  bool const has_type = levels.ink_sheet_type != INK_SHEET_UNKNOWN;
  return field("power_state", value_of(logged, "power_state"),
               info.isWakeUp() ? "awake" : "not awake")
         + field("mech_state", value_of(logged, "mech_state"),
                 info.isMechGood() ? "mechanism good" : "mechanism not good")
         + field("memory_state", value_of(logged, "memory_state"),
                 info.isMemoryFree() ? "memory free" : "memory full")
         + field("error_info", state.to_string(), error_meaning(state))
         + field(
             "ink ribbon",
             std::to_string(levels.remaining_prints) + " / " + std::to_string(levels.total_prints),
             prints_meaning(levels))
         + field("ink_sheet_type", hex_byte(levels.ink_sheet_type),
                 has_type ? "ribbon for " + levels.InkSheetTypeName() : "type not known");
}

std::string job_status_text(std::string_view reply)
{
  JobStatus const status = JobStatus::Parse(reply.data());
  return "job status " + status.to_string() + (status.isReady() ? ", ready" : ", not ready");
}
