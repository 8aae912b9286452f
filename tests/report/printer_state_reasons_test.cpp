// The reason table, row by row.
#include "report/printer_state_reasons.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <type_traits>

#include "tests/oracle/reasons.h"

namespace {

static_assert(std::is_same_v<decltype(PrinterStateReason::code), unsigned char[3]>);
static_assert(std::is_same_v<decltype(PrinterStateReason::reasons), char const* [4]>);

TEST(PrinterStateReasons, AreTheKnownCodesInTheirOrderEachWithAtMostOneKeyword)
{
  ASSERT_EQ(std::size(PRINTER_STATE_REASONS), known_codes().size());
  for (std::size_t i = 0; i < known_codes().size(); ++i) {
    PrinterStateReason const& row = PRINTER_STATE_REASONS[i];
    auto const& [code, reason] = known_codes()[i];
    SCOPED_TRACE(code_text(code));
    EXPECT_EQ(row.code[0] << 16 | row.code[1] << 8 | row.code[2], static_cast<int>(code));
    EXPECT_EQ(row.reasons[0] ? row.reasons[0] : "none", reason == 0 ? "none" : keyword(reason));
    EXPECT_EQ(row.reasons[1], nullptr);
    EXPECT_EQ(row.reasons[2], nullptr);
    EXPECT_EQ(row.reasons[3], nullptr);
  }
}

TEST(PrinterStateReasons, TwoRolesShareOneKeyword)
{
  EXPECT_STREQ(UNAVAILABLE_REASON, "com.velmo-error0023");
  EXPECT_STREQ(UNDEFINED_ERROR_REASON, "com.velmo-error0023");
}

}  // namespace
