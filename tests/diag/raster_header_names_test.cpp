// The names of a raster header's enumerations, and the texts of values without a name.
#include <gtest/gtest.h>

#include <climits>
#include <set>
#include <string>

#include "diag/raster_header.h"
#include "tests/harness/foreign_enum.h"
#include "tests/oracle/raster_listing.h"

namespace {

// Every value that has a name, everything around it, and the ends of the number range. The
// nameless ones share a buffer, which is none of the others'.
template <typename Enum>
void expect_names(std::string const& type, std::set<char const*>& buffers)
{
  std::set<int> values = {INT_MIN, INT_MIN + 1, INT_MAX, 255, 256, 257, 65536, -256};
  for (int value = -70; value <= 130; ++value) values.insert(value);
  for (int value : values)
    ASSERT_EQ(to_string(foreign_enum<Enum>(value)), raster_name(type, value)) << type << value;
  char const* const buffer = to_string(foreign_enum<Enum>(-1));
  EXPECT_EQ(buffer, to_string(foreign_enum<Enum>(1000))) << type;
  EXPECT_TRUE(buffers.insert(buffer).second) << type;
}

TEST(RasterNames, AreTheLibrarysAndEachEnumerationHasABufferForTheRest)
{
  std::set<char const*> buffers;
  expect_names<cups_adv_e>("cups_adv_e", buffers);
  expect_names<cups_bool_e>("cups_bool_e", buffers);
  expect_names<cups_cspace_e>("cups_cspace_e", buffers);
  expect_names<cups_cut_e>("cups_cut_e", buffers);
  expect_names<cups_edge_e>("cups_edge_e", buffers);
  expect_names<cups_jog_e>("cups_jog_e", buffers);
  expect_names<cups_order_e>("cups_order_e", buffers);
  expect_names<cups_orient_e>("cups_orient_e", buffers);
}

TEST(RasterNames, ColorSpacesHaveGapsBetweenTheirRuns)
{
  struct {
    int value;
    char const* name;
  } const rows[] = {
      {21, "cups_cspace_e(21)"},
      {31, "cups_cspace_e(31)"},
      {CUPS_CSPACE_ICC1, "CUPS_CSPACE_ICC1"},
      {CUPS_CSPACE_ICCF, "CUPS_CSPACE_ICCF"},
      {47, "cups_cspace_e(47)"},
      {CUPS_CSPACE_DEVICE1, "CUPS_CSPACE_DEVICE1"},
      {62, "CUPS_CSPACE_DEVICEF"},
      {63, "cups_cspace_e(63)"},
  };
  for (auto const& row : rows)
    EXPECT_STREQ(to_string(foreign_enum<cups_cspace_e>(row.value)), row.name);
}

TEST(RasterNames, ANamelessValueOverwritesTheFormerOneOfItsEnumeration)
{
  char const* seven = to_string(foreign_enum<cups_jog_e>(7));
  EXPECT_STREQ(seven, "cups_jog_e(7)");
  char const* named = to_string(CUPS_JOG_SET);
  char const* nine = to_string(foreign_enum<cups_jog_e>(9));
  EXPECT_EQ(seven, nine);
  EXPECT_STREQ(seven, "cups_jog_e(9)");
  EXPECT_NE(named, nine);
  EXPECT_STREQ(named, "CUPS_JOG_SET");
}

TEST(RasterNames, BuffersDoNotDisturbEachOther)
{
  char const* cut = to_string(foreign_enum<cups_cut_e>(-1));
  char const* space = to_string(foreign_enum<cups_cspace_e>(INT_MIN));
  char const* orient = to_string(foreign_enum<cups_orient_e>(INT_MIN));
  char const* order = to_string(foreign_enum<cups_order_e>(INT_MIN));
  EXPECT_STREQ(cut, "cups_cut_e(-1)");
  EXPECT_STREQ(space, "cups_cspace_e(-2147483648)");
  EXPECT_STREQ(orient, "cups_orient_e(-2147483648)");
  EXPECT_STREQ(order, "cups_order_e(-2147483648)");
}

}  // namespace
