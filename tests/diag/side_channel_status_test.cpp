// Names of side-channel statuses, those outside the enumeration included.
#include "diag/side_channel_status.h"

#include <gtest/gtest.h>

#include <climits>

#include "tests/harness/foreign_enum.h"

namespace {

char const* name(int status) { return to_string(foreign_enum<cups_sc_status_e>(status)); }

TEST(SideChannelStatus, EveryStatusHasItsConstantsName)
{
  EXPECT_STREQ(name(0), "CUPS_SC_STATUS_NONE");
  EXPECT_STREQ(name(1), "CUPS_SC_STATUS_OK");
  EXPECT_STREQ(name(2), "CUPS_SC_STATUS_IO_ERROR");
  EXPECT_STREQ(name(3), "CUPS_SC_STATUS_TIMEOUT");
  EXPECT_STREQ(name(4), "CUPS_SC_STATUS_NO_RESPONSE");
  EXPECT_STREQ(name(5), "CUPS_SC_STATUS_BAD_MESSAGE");
  EXPECT_STREQ(name(6), "CUPS_SC_STATUS_TOO_BIG");
  EXPECT_STREQ(name(7), "CUPS_SC_STATUS_NOT_IMPLEMENTED");
}

TEST(SideChannelStatus, EveryOtherNumberIsUnknown)
{
  for (int status = 8; status <= 300; status++) EXPECT_STREQ(name(status), "UNKNOWN") << status;
  for (int status = -300; status < 0; status++) EXPECT_STREQ(name(status), "UNKNOWN") << status;
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
