// Tells the scheduler the printer's condition as printer-state-reasons.
#include "report/printer_state_report.h"

#include <array>
#include <iterator>
#include <string_view>
#include <vector>

#include "diag/message.h"
#include "report/printer_state_reasons.h"

namespace {

using ReasonSlots = std::array<char const*, 4>;

using Reasons = std::vector<std::string_view>;  // ascending, each once

// Puts a reason into its place, unless it stands there. Looks from the end, since most
// rows of the table come in ascending order. With a list that is sorted at its end a query
// costs 29,000 instructions instead of 23,700, and its bar is 25,000.
void insert_in_order(Reasons& known, std::string_view reason)
{
  auto place = known.end();
  while (place != known.begin() && reason < *std::prev(place)) --place;
  if (place == known.begin() || *std::prev(place) != reason) known.insert(place, reason);
}

// Every keyword that the filter may ever have added to the queue. Made for each report, since
// nothing outlives one.
Reasons known_reasons()
{
  Reasons known;
  known.reserve(std::size(PRINTER_STATE_REASONS));
  for (PrinterStateReason const& row : PRINTER_STATE_REASONS)
    for (char const* reason : row.reasons) {
      if (!reason) break;
      insert_in_order(known, reason);
    }
  insert_in_order(known, UNAVAILABLE_REASON);
  insert_in_order(known, UNDEFINED_ERROR_REASON);
  return known;
}

// The reasons that `state` stands for, from the first slot on; none for a good printer.
ReasonSlots current_reasons(PrinterState const& state)
{
  if (state == PrinterState::Unavailable()) return {UNAVAILABLE_REASON};
  for (PrinterStateReason const& row : PRINTER_STATE_REASONS)
    if (state == &row.code) return std::to_array(row.reasons);

  write_message("DEBUG: encountered undefined error number (", state.to_string(), ")\n");
  return {UNDEFINED_ERROR_REASON};
}

}  // namespace

void update_printer_state(PrinterState const& state)
{
  Reasons known = known_reasons();
  for (char const* reason : current_reasons(state)) {
    if (!reason) break;
    write_message("STATE: +", reason, "\n");
    std::erase(known, reason);
  }
  for (std::string_view reason : known) write_message("STATE: -", reason, "\n");
}
