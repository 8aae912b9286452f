// Tells the scheduler the ink ribbon's level as marker attributes.
#pragma once

#include "protocol/printer_levels.h"

// Writes one "DEBUG:" line and the five "ATTR: marker-" lines of the one marker to
// standard error. The level is a percentage, rounded down and not bounded above; -1 when
// the counts are not known, -2 when no levels could be had.
void report_printer_levels(PrinterLevels const& levels);
