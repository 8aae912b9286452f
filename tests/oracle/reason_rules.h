// Which reason each printer error code stands for, written a second time.
#pragma once

#include <array>
#include <string>

struct KnownCode {
  unsigned code;  // the three bytes, the first one highest
  int reason;     // the keyword's number; 0 for none
};

// Sorted by code, unlike the table of the printer's manual.
extern std::array<KnownCode, 38> const KNOWN_CODES;

// All messages for an error code, and those for a printer that gave no answer.
void append_reason_report(std::string& text, unsigned code);
void append_unavailable_reason_report(std::string& text);

// An error code as the log writes it.
std::string code_text(unsigned code);
