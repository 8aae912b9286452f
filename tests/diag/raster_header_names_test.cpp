// The names of a raster header's enumerations, and the texts of values without a name.
#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <set>
#include <string>

#include "diag/raster_header.h"
#include "tests/harness/foreign_enum.h"

namespace {

using Names = std::map<int, std::string>;

// Every value that has a name, everything around it, and the ends of the number range.
template <typename Enum>
void expect_names(std::string const& type, Names const& names)
{
  std::set<int> values = {INT_MIN, INT_MIN + 1, INT_MAX, 255, 256, 257, 65536, -256};
  for (int value = -70; value <= 130; value++) values.insert(value);
  for (int value : values) {
    auto const named = names.find(value);
    EXPECT_EQ(to_string(foreign_enum<Enum>(value)),
              named != names.end() ? named->second : type + "(" + std::to_string(value) + ")");
  }
}

TEST(RasterNames, Advance)
{
  expect_names<cups_adv_e>("cups_adv_e", {{0, "CUPS_ADVANCE_NONE"},
                                          {1, "CUPS_ADVANCE_FILE"},
                                          {2, "CUPS_ADVANCE_JOB"},
                                          {3, "CUPS_ADVANCE_SET"},
                                          {4, "CUPS_ADVANCE_PAGE"}});
}

TEST(RasterNames, Boolean)
{
  expect_names<cups_bool_e>("cups_bool_e", {{0, "CUPS_FALSE"}, {1, "CUPS_TRUE"}});
}

TEST(RasterNames, ColorSpace)
{
  Names names = {
      {0, "CUPS_CSPACE_W"},       {1, "CUPS_CSPACE_RGB"},     {2, "CUPS_CSPACE_RGBA"},
      {3, "CUPS_CSPACE_K"},       {4, "CUPS_CSPACE_CMY"},     {5, "CUPS_CSPACE_YMC"},
      {6, "CUPS_CSPACE_CMYK"},    {7, "CUPS_CSPACE_YMCK"},    {8, "CUPS_CSPACE_KCMY"},
      {9, "CUPS_CSPACE_KCMYcm"},  {10, "CUPS_CSPACE_GMCK"},   {11, "CUPS_CSPACE_GMCS"},
      {12, "CUPS_CSPACE_WHITE"},  {13, "CUPS_CSPACE_GOLD"},   {14, "CUPS_CSPACE_SILVER"},
      {15, "CUPS_CSPACE_CIEXYZ"}, {16, "CUPS_CSPACE_CIELab"}, {17, "CUPS_CSPACE_RGBW"},
      {18, "CUPS_CSPACE_SW"},     {19, "CUPS_CSPACE_SRGB"},   {20, "CUPS_CSPACE_ADOBERGB"},
  };
  std::string const digits = "123456789ABCDEF";
  for (int i = 0; i < 15; i++) {
    char const digit = digits[static_cast<std::size_t>(i)];
    names[32 + i] = std::string("CUPS_CSPACE_ICC") + digit;
    names[48 + i] = std::string("CUPS_CSPACE_DEVICE") + digit;
  }
  ASSERT_EQ(names.size(), 51u);
  expect_names<cups_cspace_e>("cups_cspace_e", names);
}

TEST(RasterNames, ColorSpaceGaps)
{
  EXPECT_STREQ(to_string(foreign_enum<cups_cspace_e>(21)), "cups_cspace_e(21)");
  EXPECT_STREQ(to_string(foreign_enum<cups_cspace_e>(31)), "cups_cspace_e(31)");
  EXPECT_STREQ(to_string(CUPS_CSPACE_ICC1), "CUPS_CSPACE_ICC1");
  EXPECT_STREQ(to_string(CUPS_CSPACE_ICCF), "CUPS_CSPACE_ICCF");
  EXPECT_STREQ(to_string(foreign_enum<cups_cspace_e>(47)), "cups_cspace_e(47)");
  EXPECT_STREQ(to_string(CUPS_CSPACE_DEVICE1), "CUPS_CSPACE_DEVICE1");
  EXPECT_STREQ(to_string(foreign_enum<cups_cspace_e>(62)), "CUPS_CSPACE_DEVICEF");
  EXPECT_STREQ(to_string(foreign_enum<cups_cspace_e>(63)), "cups_cspace_e(63)");
}

TEST(RasterNames, Cut)
{
  expect_names<cups_cut_e>("cups_cut_e", {{0, "CUPS_CUT_NONE"},
                                          {1, "CUPS_CUT_FILE"},
                                          {2, "CUPS_CUT_JOB"},
                                          {3, "CUPS_CUT_SET"},
                                          {4, "CUPS_CUT_PAGE"}});
}

TEST(RasterNames, Edge)
{
  expect_names<cups_edge_e>("cups_edge_e", {{0, "CUPS_EDGE_TOP"},
                                            {1, "CUPS_EDGE_RIGHT"},
                                            {2, "CUPS_EDGE_BOTTOM"},
                                            {3, "CUPS_EDGE_LEFT"}});
}

TEST(RasterNames, Jog)
{
  expect_names<cups_jog_e>(
      "cups_jog_e",
      {{0, "CUPS_JOG_NONE"}, {1, "CUPS_JOG_FILE"}, {2, "CUPS_JOG_JOB"}, {3, "CUPS_JOG_SET"}});
}

TEST(RasterNames, Order)
{
  expect_names<cups_order_e>(
      "cups_order_e",
      {{0, "CUPS_ORDER_CHUNKED"}, {1, "CUPS_ORDER_BANDED"}, {2, "CUPS_ORDER_PLANAR"}});
}

TEST(RasterNames, Orientation)
{
  expect_names<cups_orient_e>("cups_orient_e", {{0, "CUPS_ORIENT_0"},
                                                {1, "CUPS_ORIENT_90"},
                                                {2, "CUPS_ORIENT_180"},
                                                {3, "CUPS_ORIENT_270"}});
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

template <typename Enum>
void expect_own_buffer(std::set<char const*>& buffers)
{
  char const* first = to_string(foreign_enum<Enum>(-1));
  EXPECT_EQ(first, to_string(foreign_enum<Enum>(1000)));
  EXPECT_TRUE(buffers.insert(first).second);
}

TEST(RasterNames, EachEnumerationHasABufferOfItsOwn)
{
  std::set<char const*> buffers;
  expect_own_buffer<cups_adv_e>(buffers);
  expect_own_buffer<cups_bool_e>(buffers);
  expect_own_buffer<cups_cspace_e>(buffers);
  expect_own_buffer<cups_cut_e>(buffers);
  expect_own_buffer<cups_edge_e>(buffers);
  expect_own_buffer<cups_jog_e>(buffers);
  expect_own_buffer<cups_order_e>(buffers);
  expect_own_buffer<cups_orient_e>(buffers);
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
