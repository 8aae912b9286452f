// Equality and text of the printer's condition.
#include "protocol/printer_state.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "tests/harness/retyped.h"

namespace {

using Code = unsigned char[3];

constexpr Code ZERO = {0x00, 0x00, 0x00};
constexpr Code ERROR_1 = {0x06, 0x02, 0x02};
constexpr Code SUPPLY_LOW = {0xfe, 0xed, 0x01};

static_assert(std::is_same_v<std::underlying_type_t<PrinterState::Type>, std::int32_t>);
static_assert(!std::is_convertible_v<PrinterState::Type, std::int32_t>, "scoped enumeration");
static_assert(static_cast<int>(PrinterState::Type::Unavailable) == 0);
static_assert(static_cast<int>(PrinterState::Type::Available) == 1);
static_assert(!std::is_polymorphic_v<PrinterState> && sizeof(PrinterState) == 8);

// Whether the two are equal; says so when == and != do not contradict each other.
template <typename Other>
bool equal(PrinterState const& state, Other const& other)
{
  EXPECT_NE(state == other, state != other);
  return state == other;
}

PrinterState of_type(int type) { return PrinterState(static_cast<PrinterState::Type>(type)); }

TEST(PrinterState, TypeComesFirstThenTheCodeInTheOrderSent)
{
  Code const code = {0xab, 0xcd, 0xef};
  EXPECT_EQ(first_number_of(PrinterState::Error(&code)), 1);
  auto const bytes = bytes_of(PrinterState::Error(&code));
  EXPECT_EQ(bytes.at[4], 0xab);
  EXPECT_EQ(bytes.at[5], 0xcd);
  EXPECT_EQ(bytes.at[6], 0xef);
}

TEST(PrinterState, TextOfEachKind)
{
  EXPECT_EQ(PrinterState::Unavailable().to_string(), "UNAVAILABLE");
  EXPECT_EQ(PrinterState::Good().to_string(), "GOOD");
  EXPECT_EQ(PrinterState::Error(&ERROR_1).to_string(), "0x06,0x02,0x02");
  EXPECT_EQ(PrinterState::InternalSupplyLow().to_string(), "0xfe,0xed,0x01");
}

TEST(PrinterState, TextIsLowerCaseAndUnsigned)
{
  Code const letters = {0xab, 0xcd, 0xef};
  Code const ends = {0x00, 0x0f, 0xff};
  EXPECT_EQ(PrinterState::Error(&letters).to_string(), "0xab,0xcd,0xef");
  EXPECT_EQ(PrinterState::Error(&ends).to_string(), "0x00,0x0f,0xff");
}

TEST(PrinterState, OnlyThreeZerosAreGood)
{
  Code const first = {1, 0, 0};
  Code const second = {0, 1, 0};
  Code const third = {0, 0, 1};
  EXPECT_EQ(PrinterState::Error(&first).to_string(), "0x01,0x00,0x00");
  EXPECT_EQ(PrinterState::Error(&second).to_string(), "0x00,0x01,0x00");
  EXPECT_EQ(PrinterState::Error(&third).to_string(), "0x00,0x00,0x01");
}

TEST(PrinterState, ErrorOfThreeZerosIsTheGoodState)
{
  EXPECT_TRUE(equal(PrinterState::Error(&ZERO), PrinterState::Good()));
  EXPECT_EQ(PrinterState::Error(&ZERO).to_string(), "GOOD");
}

TEST(PrinterState, AvailableStatesAreEqualByTheirCode)
{
  EXPECT_TRUE(equal(PrinterState::Error(&ERROR_1), PrinterState::Error(&ERROR_1)));
  EXPECT_FALSE(equal(PrinterState::Error(&ERROR_1), PrinterState::Good()));
  EXPECT_TRUE(equal(PrinterState::InternalSupplyLow(), PrinterState::Error(&SUPPLY_LOW)));
}

TEST(PrinterState, EveryByteOfTheCodeCounts)
{
  for (int byte = 0; byte < 3; byte++) {
    for (int bit = 0; bit < 8; bit++) {
      Code other = {ERROR_1[0], ERROR_1[1], ERROR_1[2]};
      other[byte] = static_cast<unsigned char>(other[byte] ^ (1u << bit));
      EXPECT_FALSE(equal(PrinterState::Error(&ERROR_1), &other));
      EXPECT_FALSE(equal(PrinterState::Error(&ERROR_1), PrinterState::Error(&other)));
    }
  }
}

TEST(PrinterState, BytesAreComparedInTheirOrder)
{
  Code const reversed = {0x01, 0xed, 0xfe};
  EXPECT_FALSE(equal(PrinterState::InternalSupplyLow(), &reversed));
}

TEST(PrinterState, UnavailableStatesAreEqualToEachOtherOnly)
{
  EXPECT_TRUE(equal(PrinterState::Unavailable(), PrinterState::Unavailable()));
  EXPECT_FALSE(equal(PrinterState::Unavailable(), PrinterState::Good()));
  EXPECT_FALSE(equal(PrinterState::Good(), PrinterState::Unavailable()));
}

TEST(PrinterState, CodesOfUnavailableStatesAreNotLookedAt)
{
  PrinterState const one(PrinterState::Type::Unavailable, &ERROR_1);
  PrinterState const other(PrinterState::Type::Unavailable, &SUPPLY_LOW);
  EXPECT_TRUE(equal(one, other));
  EXPECT_FALSE(equal(one, &ERROR_1));
  EXPECT_FALSE(equal(one, PrinterState::Error(&ERROR_1)));
  EXPECT_EQ(one.to_string(), "UNAVAILABLE");
}

TEST(PrinterState, AStateEqualsItsOwnTriple)
{
  EXPECT_TRUE(equal(PrinterState::Good(), &ZERO));
  EXPECT_TRUE(equal(PrinterState::InternalSupplyLow(), &SUPPLY_LOW));
  EXPECT_TRUE(equal(PrinterState::Error(&ERROR_1), &ERROR_1));
  EXPECT_FALSE(equal(PrinterState::Unavailable(), &ZERO));
}

TEST(PrinterState, AForeignTypeEqualsNothingNotEvenItself)
{
  for (int type : {2, 3, -1, 256, INT32_MAX, INT32_MIN}) {
    PrinterState const state = of_type(type);
    EXPECT_FALSE(equal(state, state)) << type;
    EXPECT_FALSE(equal(state, PrinterState::Unavailable())) << type;
    EXPECT_FALSE(equal(PrinterState::Unavailable(), state)) << type;
    EXPECT_FALSE(equal(state, PrinterState::Good())) << type;
    EXPECT_FALSE(equal(PrinterState::Good(), state)) << type;
    EXPECT_FALSE(equal(state, &ZERO)) << type;
    EXPECT_EQ(state.to_string(), "UNKNOWN") << type;
  }
}

TEST(PrinterState, AForeignTypeWithACodeEqualsNoTriple)
{
  PrinterState const state(static_cast<PrinterState::Type>(2), &ERROR_1);
  EXPECT_FALSE(equal(state, &ERROR_1));
  EXPECT_FALSE(equal(state, PrinterState::Error(&ERROR_1)));
  EXPECT_EQ(state.to_string(), "UNKNOWN");
}

}  // namespace
