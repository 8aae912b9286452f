// Any number can be had back from an enumeration variable of the library.
#include "diag/enumeration_bits.h"

#include <cups/raster.h>
#include <cups/sidechannel.h>
#include <gtest/gtest.h>

#include <climits>

#include "tests/harness/foreign_enum.h"

namespace {

TEST(EnumerationBits, ANumberComesBackAsItWasStored)
{
  for (int number : {0, 1, 2, 255, 256, -1, -128, INT_MAX, INT_MIN}) {
    cups_bool_e boolean = CUPS_FALSE;
    store_number(boolean, number);
    EXPECT_EQ(enumeration_bits(boolean), number);
    cups_sc_status_e status = CUPS_SC_STATUS_NONE;
    store_number(status, number);
    EXPECT_EQ(enumeration_bits(status), number);
  }
}

}  // namespace
