// Tells the scheduler the ink ribbon's level as marker attributes.
#include "report/printer_levels_report.h"

#include <cstdio>
#include <string>

#include "diag/message.h"

namespace {

// Kept: filter(7) has these two the other way round; clients show either as "no level".
constexpr int LEVELS_UNAVAILABLE = -2;
constexpr int LEVEL_UNKNOWN = -1;
constexpr std::uint16_t COUNT_UNKNOWN = 0xffff;
constexpr std::uint8_t INK_SHEET_UNKNOWN = 0xff;
constexpr char const* BLANK = " ";

struct Gauge {
  int level;
  std::string message;
};

Gauge read_gauge(PrinterLevels const& levels)
{
  unsigned const remaining = levels.remaining_prints;
  unsigned const total = levels.total_prints;
  if (!levels.isAvailable()) return {LEVELS_UNAVAILABLE, BLANK};
  if (remaining == COUNT_UNKNOWN || total == COUNT_UNKNOWN || total == 0)
    return {LEVEL_UNKNOWN, BLANK};

  char message[128];
  std::snprintf(message, sizeof message, "Prints Remaining = %u / %u", remaining, total);
  return {static_cast<int>(remaining * 100 / total), message};
}

// Kept: unavailable levels have a name all the same, that of their type code 00.
std::string marker_name(PrinterLevels const& levels)
{
  if (levels.ink_sheet_type == INK_SHEET_UNKNOWN) return BLANK;
  return "Ribbon Type: " + levels.InkSheetTypeName();
}

}  // namespace

void report_printer_levels(PrinterLevels const& levels)
{
  write_message("DEBUG: [ReportLevels] ", levels.to_string(), "\n");

  Gauge const gauge = read_gauge(levels);
  std::string const name = marker_name(levels);
  write_message("ATTR: marker-colors=#00FF00\n");
  write_message("ATTR: marker-levels=", std::to_string(gauge.level), "\n");
  write_message("ATTR: marker-message=\"", gauge.message, "\"\n");
  write_message("ATTR: marker-names=\"", name, "\"\n");
  write_message("ATTR: marker-types=ink-ribbon\n");
}
