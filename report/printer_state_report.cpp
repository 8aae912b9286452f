// Tells the scheduler the printer's condition as printer-state-reasons.
#include "report/printer_state_report.h"

#include <array>
#include <set>
#include <string_view>

#include "diag/message.h"
#include "report/printer_state_reasons.h"

namespace {

using ReasonSlots = std::array<char const*, 4>;

// Every keyword that the filter may ever have added to the queue.
std::set<std::string_view> known_reasons()
{
  std::set<std::string_view> known;
  auto last = known.end();  // a good guess for the next: most rows are in ascending order
  for (PrinterStateReason const& row : PRINTER_STATE_REASONS)
    for (char const* reason : row.reasons) {
      if (!reason) break;
      last = known.insert(last, reason);
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

  write_message({"DEBUG: encountered undefined error number (", state.to_string(), ")\n"});
  return {UNDEFINED_ERROR_REASON};
}

}  // namespace

void update_printer_state(PrinterState const& state)
{
  std::set<std::string_view> known = known_reasons();
  for (char const* reason : current_reasons(state)) {
    if (!reason) break;
    write_message({"STATE: +", reason, "\n"});
    known.erase(reason);
  }
  for (std::string_view reason : known) write_message({"STATE: -", reason, "\n"});
}
