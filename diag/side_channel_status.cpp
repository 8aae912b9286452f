// Names of the side channel's status codes, for the log.
#include "diag/side_channel_status.h"

#include <iterator>

#include "diag/enumeration_bits.h"

char const* to_string(cups_sc_status_e status)
{
  static constexpr char const* NAMES[] = {
      "CUPS_SC_STATUS_NONE",        "CUPS_SC_STATUS_OK",
      "CUPS_SC_STATUS_IO_ERROR",    "CUPS_SC_STATUS_TIMEOUT",
      "CUPS_SC_STATUS_NO_RESPONSE", "CUPS_SC_STATUS_BAD_MESSAGE",
      "CUPS_SC_STATUS_TOO_BIG",     "CUPS_SC_STATUS_NOT_IMPLEMENTED",
  };

  // Taken as unsigned, a negative number fails the same range test.
  auto const number = static_cast<unsigned>(enumeration_bits(status));
  return number < std::size(NAMES) ? NAMES[number] : "UNKNOWN";
}
