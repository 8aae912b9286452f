// The reason table, row by row.
#include "report/printer_state_reasons.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <type_traits>

#include "tests/report/reason_rows.h"

namespace {

static_assert(std::is_same_v<decltype(PrinterStateReason::code), unsigned char[3]>);
static_assert(std::is_same_v<decltype(PrinterStateReason::reasons), char const* [4]>);
static_assert(std::is_same_v<decltype(PRINTER_STATE_REASONS), PrinterStateReason const[38]>);
static_assert(std::size(REASON_ROWS) == 38);

TEST(PrinterStateReasons, EveryRowHasItsCodeAndAtMostOneKeyword)
{
  for (std::size_t i = 0; i < std::size(REASON_ROWS); i++) {
    PrinterStateReason const& row = PRINTER_STATE_REASONS[i];
    EXPECT_EQ(row.code[0], REASON_ROWS[i].code[0]) << i;
    EXPECT_EQ(row.code[1], REASON_ROWS[i].code[1]) << i;
    EXPECT_EQ(row.code[2], REASON_ROWS[i].code[2]) << i;
    EXPECT_EQ(row.reasons[1], nullptr) << i;
    EXPECT_EQ(row.reasons[2], nullptr) << i;
    EXPECT_EQ(row.reasons[3], nullptr) << i;
  }
}

TEST(PrinterStateReasons, EveryRowHasItsKeyword)
{
  EXPECT_EQ(PRINTER_STATE_REASONS[0].reasons[0], nullptr);
  for (std::size_t i = 1; i < std::size(REASON_ROWS); i++) {
    int const number = REASON_ROWS[i].number;
    std::string const zeros = number < 10 ? "000" : "00";
    ASSERT_NE(PRINTER_STATE_REASONS[i].reasons[0], nullptr) << i;
    EXPECT_EQ(PRINTER_STATE_REASONS[i].reasons[0],
              "com.velmo-error" + zeros + std::to_string(number))
        << i;
  }
}

TEST(PrinterStateReasons, TwoRolesShareOneKeyword)
{
  EXPECT_STREQ(UNAVAILABLE_REASON, "com.velmo-error0023");
  EXPECT_STREQ(UNDEFINED_ERROR_REASON, "com.velmo-error0023");
}

}  // namespace
