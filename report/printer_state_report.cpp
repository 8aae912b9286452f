// Tells the scheduler the printer's condition as printer-state-reasons.
#include "report/printer_state_report.h"

#include <array>
#include <cstdio>
#include <set>
#include <string_view>

#include "report/printer_state_reasons.h"

namespace {

using ReasonSlots = std::array<char const*, 4>;

// Every keyword that the filter may ever have added to the queue.
std::set<std::string_view> known_reasons()
{
  std::set<std::string_view> known;
  for (PrinterStateReason const& row : PRINTER_STATE_REASONS)
    for (char const* reason : row.reasons) {
      if (!reason) break;
      known.insert(reason);
    }
  known.insert(UNAVAILABLE_REASON);
  known.insert(UNDEFINED_ERROR_REASON);
  return known;
}

// The reasons that `state` stands for, from the first slot on; none for a good printer.
ReasonSlots current_reasons(PrinterState const& state)
{
  if (state == PrinterState::Unavailable()) return {UNAVAILABLE_REASON};
  for (PrinterStateReason const& row : PRINTER_STATE_REASONS)
    if (state == &row.code) return std::to_array(row.reasons);

  std::fprintf(stderr, "DEBUG: encountered undefined error number (%s)\n",
               state.to_string().c_str());
  return {UNDEFINED_ERROR_REASON};
}

}  // namespace

void update_printer_state(PrinterState const& state)
{
  std::set<std::string_view> known = known_reasons();
  for (char const* reason : current_reasons(state)) {
    if (!reason) break;
    std::fprintf(stderr, "STATE: +%s\n", reason);
    known.erase(reason);
  }
  for (std::string_view reason : known) std::fprintf(stderr, "STATE: -%s\n", reason.data());
}
