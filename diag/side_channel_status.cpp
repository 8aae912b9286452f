// Names of the side channel's status codes, for the log.
#include "diag/side_channel_status.h"

#include <bit>
#include <iterator>

char const* to_string(cups_sc_status_e status)
{
  static constexpr char const* NAMES[] = {
      "CUPS_SC_STATUS_NONE",        "CUPS_SC_STATUS_OK",
      "CUPS_SC_STATUS_IO_ERROR",    "CUPS_SC_STATUS_TIMEOUT",
      "CUPS_SC_STATUS_NO_RESPONSE", "CUPS_SC_STATUS_BAD_MESSAGE",
      "CUPS_SC_STATUS_TOO_BIG",     "CUPS_SC_STATUS_NOT_IMPLEMENTED",
  };

  // The bits, not the value: a backend's status may be none of the enumerators, and
  // as an unsigned number a negative one fails the same range test.
  auto const number = std::bit_cast<unsigned>(status);
  return number < std::size(NAMES) ? NAMES[number] : "UNKNOWN";
}
