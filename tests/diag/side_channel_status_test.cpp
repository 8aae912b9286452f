// Names of side-channel statuses, those outside the enumeration included.
#include "diag/side_channel_status.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "tests/harness/foreign_enum.h"

namespace {

char const* name(int status) { return to_string(foreign_enum<cups_sc_status_e>(status)); }

TEST(SideChannelStatus, EveryStatusHasItsConstantsName)
{
  char const* const names[] = {"NONE",        "OK",          "IO_ERROR", "TIMEOUT",
                               "NO_RESPONSE", "BAD_MESSAGE", "TOO_BIG",  "NOT_IMPLEMENTED"};
  for (int status = 0; status < 8; ++status)
    EXPECT_EQ(name(status), std::string("CUPS_SC_STATUS_") + names[status]);
}

TEST(SideChannelStatus, EveryOtherNumberIsUnknown)
{
  for (int status = 8; status <= 300; ++status) EXPECT_STREQ(name(status), "UNKNOWN") << status;
  for (int status = -300; status < 0; ++status) EXPECT_STREQ(name(status), "UNKNOWN") << status;
  // Numbers whose low byte or low half is a known status.
  for (int status : {INT_MIN, INT_MIN + 1, INT_MAX, 257, 65536, 65537, -255, 1 << 24}) {
    EXPECT_STREQ(name(status), "UNKNOWN") << status;
  }
}

TEST(SideChannelStatus, ANameOutlivesTheNextCall)
{
  char const* timeout = name(3);
  char const* unknown = name(99);
  name(-1);
  name(5);
  EXPECT_STREQ(timeout, "CUPS_SC_STATUS_TIMEOUT");
  EXPECT_STREQ(unknown, "UNKNOWN");
}

}  // namespace
