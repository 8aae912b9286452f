// Equality and text of the printer's condition.
#include "protocol/printer_state.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/harness/hex.h"
#include "tests/harness/retyped.h"

namespace {

static_assert(TypedRecord<PrinterState> && sizeof(PrinterState) == 8);

using Code = unsigned char[3];
using Type = PrinterState::Type;

constexpr Code ZERO = {0x00, 0x00, 0x00};
constexpr Code ERROR_1 = {0x06, 0x02, 0x02};
constexpr Code SUPPLY_LOW = {0xfe, 0xed, 0x01};
constexpr Code LETTERS = {0xab, 0xcd, 0xef};
constexpr Code ENDS = {0x00, 0x0f, 0xff};

struct Row {
  char const* rule;
  PrinterState state;
  std::string text;
};

Row const ROWS[] = {
    {"no status", PrinterState::Unavailable(), "UNAVAILABLE"},
    {"its code is not looked at", {Type::Unavailable, &ERROR_1}, "UNAVAILABLE"},
    {"whatever it is", {Type::Unavailable, &SUPPLY_LOW}, "UNAVAILABLE"},
    {"no error", PrinterState::Good(), "GOOD"},
    {"three zeros", PrinterState::Error(&ZERO), "GOOD"},
    {"an error", PrinterState::Error(&ERROR_1), "0x06,0x02,0x02"},
    {"the same again", PrinterState::Error(&ERROR_1), "0x06,0x02,0x02"},
    {"no prints remain", PrinterState::InternalSupplyLow(), "0xfe,0xed,0x01"},
    {"its code as an error", PrinterState::Error(&SUPPLY_LOW), "0xfe,0xed,0x01"},
    {"lower case", PrinterState::Error(&LETTERS), "0xab,0xcd,0xef"},
    {"unsigned", PrinterState::Error(&ENDS), "0x00,0x0f,0xff"},
    {"foreign type 2", PrinterState(static_cast<Type>(2)), "UNKNOWN"},
    {"foreign type 2 with a code", {static_cast<Type>(2), &ERROR_1}, "UNKNOWN"},
    {"foreign type 3", PrinterState(static_cast<Type>(3)), "UNKNOWN"},
    {"foreign type -1", PrinterState(static_cast<Type>(-1)), "UNKNOWN"},
    {"foreign type 256", PrinterState(static_cast<Type>(256)), "UNKNOWN"},
    {"the last type", PrinterState(static_cast<Type>(INT32_MAX)), "UNKNOWN"},
    {"the first type", PrinterState(static_cast<Type>(INT32_MIN)), "UNKNOWN"},
};

// Whether the two are equal; says so when == and != do not contradict each other.
template <typename Other>
bool equal(PrinterState const& state, Other const& other)
{
  EXPECT_NE(state == other, state != other);
  return state == other;
}

TEST(PrinterState, TypeComesFirstThenTheCodeInTheOrderSent)
{
  EXPECT_EQ(first_number_of(PrinterState::Error(&LETTERS)), 1);
  EXPECT_EQ(hex(bytes_after_type(PrinterState::Error(&LETTERS)).substr(0, 3)), "ab cd ef");
}

TEST(PrinterState, TextTellsTheTypeOrTheCode)
{
  for (Row const& row : ROWS) EXPECT_EQ(row.state.to_string(), row.text) << row.rule;
}

TEST(PrinterState, StatesOfOneTextAreEqualButAForeignTypeEqualsNothingNotEvenItself)
{
  for (Row const& one : ROWS) {
    for (Row const& other : ROWS) {
      bool const expected = one.text == other.text && one.text != "UNKNOWN";
      EXPECT_EQ(equal(one.state, other.state), expected) << one.rule << ", " << other.rule;
    }
  }
}

TEST(PrinterState, OnlyAnAvailableStateEqualsItsOwnTriple)
{
  Code const reversed = {0x01, 0xed, 0xfe};
  struct {
    Code const* triple;
    char const* text;
  } const triples[] = {{&ZERO, "GOOD"},
                       {&ERROR_1, "0x06,0x02,0x02"},
                       {&SUPPLY_LOW, "0xfe,0xed,0x01"},
                       {&reversed, "0x01,0xed,0xfe"}};
  for (Row const& row : ROWS)
    for (auto const& [triple, text] : triples)
      EXPECT_EQ(equal(row.state, triple), row.text == text) << row.rule << ", " << text;
}

TEST(PrinterState, EveryBitOfTheCodeCounts)
{
  for (Code const* code : {&ERROR_1, &ZERO}) {
    for (int bit = 0; bit < 24; ++bit) {
      Code other = {(*code)[0], (*code)[1], (*code)[2]};
      other[bit / 8] = static_cast<unsigned char>(other[bit / 8] ^ (1u << bit % 8));
      EXPECT_FALSE(equal(PrinterState::Error(code), &other)) << bit;
      EXPECT_FALSE(equal(PrinterState::Error(code), PrinterState::Error(&other))) << bit;
      EXPECT_NE(PrinterState::Error(&other).to_string(), "GOOD") << bit;
    }
  }
}

}  // namespace
