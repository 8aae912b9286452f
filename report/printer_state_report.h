// Tells the scheduler the printer's condition as printer-state-reasons.
#pragma once

#include "protocol/printer_state.h"

// Writes the whole picture as "STATE:" lines to standard error: "STATE: +" for each
// reason the state stands for, then "STATE: -" for every other known reason in ascending
// order. Written afresh on every call, so that the scheduler's list is exact whatever it
// held before. A code that no table row holds is logged first.
void update_printer_state(PrinterState const& state);
