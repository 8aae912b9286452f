// What is said of a ribbon with given counts and ink sheet, written a second time.
#pragma once

#include <string>

struct Ribbon {
  unsigned total;
  unsigned remaining;
  unsigned ink_sheet;
};

// The percentage, rounded down; 0 when the counts give none.
unsigned level_of(Ribbon const& ribbon);

// The ribbon as the log writes it, and the name of its ink sheet.
void append_ribbon_text(std::string& text, Ribbon const& ribbon);
void append_ink_sheet_name(std::string& text, unsigned ink_sheet);

// The six lines of the level report. `level` is the percentage, and taken as it is: it is
// for the caller to know it. Not used when the counts give none.
void append_level_report(std::string& text, Ribbon const& ribbon, unsigned level);

std::string level_report_text(Ribbon const& ribbon, unsigned level);
std::string unavailable_levels_text();
