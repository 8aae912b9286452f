// The printer's error codes and the printer-state-reasons keywords they stand for.
#pragma once

struct PrinterStateReason {
  unsigned char code[3];   // the printer's error code, in the order it is sent
  char const* reasons[4];  // keywords from the first slot on; null ends the list
};

// All known codes; a lookup takes the first row that matches. Row 0 is the good state
// and has no keyword. Several codes may share one keyword.
extern PrinterStateReason const PRINTER_STATE_REASONS[38];

// Kept: two roles share one keyword: nothing could be had from the printer, and the
// printer reports a code that is not in the table.
inline constexpr char const* UNAVAILABLE_REASON = "com.velmo-error0023";
inline constexpr char const* UNDEFINED_ERROR_REASON = "com.velmo-error0023";
