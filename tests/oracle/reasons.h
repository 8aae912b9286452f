// Which reason each printer error code stands for, told a second time.
#pragma once

#include <span>
#include <string>

struct KnownCode {
  unsigned code;  // the three bytes, the first one highest
  int reason;     // the keyword's number; 0 for none
};

inline constexpr int UNKNOWN_REASON = 23;  // no answer, or a code that is not in the table
inline constexpr unsigned EXHAUSTED_RIBBON = 0xfeed01;

// In the order of the reason table.
std::span<KnownCode const> known_codes();
// The numbers of all keywords, ascending.
std::span<int const> known_reasons();

// A reason's keyword, "com.velmo-error0001".
std::string keyword(int reason);
// An error code as the log writes it: "GOOD" or "0x06,0x02,0x02".
std::string code_text(unsigned code);

// The "STATE:" lines: the current reason is added, 0 for none, every other known one removed.
std::string reasons_text(int current = 0);
// All messages for an error code.
std::string reason_report_text(unsigned code);
void append_reason_report(std::string& text, unsigned code);
inline std::string unavailable_reasons_text() { return reasons_text(UNKNOWN_REASON); }
