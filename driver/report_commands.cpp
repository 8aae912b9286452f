// The two directives of a command file that this filter carries out.
#include "driver/report_commands.h"

#include <cups/cups.h>

#include "protocol/queries.h"
#include "report/printer_levels_report.h"
#include "report/printer_state_report.h"

// Exported by libcups 2 but in none of its installed headers. Unlike strcasecmp it
// compares ASCII letters whatever the locale.
#if CUPS_VERSION_MAJOR != 2
#error "commandtovelmo needs libcups 2: libcups 3 changed the interfaces that filters use"
#endif
// NOLINTNEXTLINE(clang-diagnostic-reserved-identifier): the library's own name
extern "C" int _cups_strcasecmp(char const*, char const*);

namespace {

void report_levels(bool bidirectional)
{
  if (!bidirectional) {
    // Kept: without an answer the levels are taken back and the reasons left alone.
    report_printer_levels(PrinterLevels::Unavailable());
    return;
  }
  PrinterInfo const info = get_printer_info_retry();
  report_printer_levels(info.GetPrinterLevels());
  update_printer_state(info.GetPrinterState());
}

void report_status(bool bidirectional)
{
  update_printer_state(bidirectional ? get_printer_info_retry().GetPrinterState()
                                     : PrinterState::Unavailable());
}

}  // namespace

void run_report_command(char const* directive, bool bidirectional)
{
  if (_cups_strcasecmp(directive, "ReportLevels") == 0)
    report_levels(bidirectional);
  else if (_cups_strcasecmp(directive, "ReportStatus") == 0)
    report_status(bidirectional);
}
