// What is read from a status reply, and what it says about printer and ribbon.
#include "protocol/printer_info.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "tests/harness/hex.h"
#include "tests/harness/retyped.h"
#include "tests/harness/same_text.h"
#include "tests/oracle/status_reply.h"

namespace {

static_assert(TypedRecord<PrinterInfo> && sizeof(PrinterInfo) == 20);

PrinterInfo parsed(StatusReply const& reply) { return PrinterInfo::Parse(reply.bytes().data()); }

// Both bytes of a count are the same here: the processor has an order of its own.
TEST(PrinterInfo, FieldsStandInTheRecordsOwnOrder)
{
  StatusReply const reply = {.power = 2,
                             .mech = {3, 4},
                             .memory = 1,
                             .error = {5, 6, 7},
                             .total = 0x0909,
                             .remaining = 0x0a0a,
                             .ink_sheet = 8};
  EXPECT_EQ(first_number_of(parsed(reply)), 1);
  std::string const bytes = bytes_after_type(parsed(reply));
  EXPECT_EQ(hex(bytes.substr(0, 7)), "02 03 04 01 05 06 07");
  EXPECT_EQ(hex(bytes.substr(8, 5)), "09 09 0a 0a 08");  // behind a byte that holds nothing
}

TEST(PrinterInfo, TextOfAGoodPrinter)
{
  StatusReply const reply = {.total = 300, .remaining = 120, .ink_sheet = 0x84};
  EXPECT_EQ(parsed(reply).to_string(),
            "power_state=0x00 mech_state=[0x00,0x00] memory_state=0x00 error_info=[GOOD] "
            "levels=[ink ribbon 120 / 300 ink_sheet_type=0x84]");
}

TEST(PrinterInfo, TextShowsEachFieldInItsPlace)
{
  StatusReply const reply = {.power = 0x1a,
                             .mech = {0x20, 0x8b},
                             .memory = 0xfe,
                             .error = {0x06, 0x02, 0xc2},
                             .total = 65535,
                             .remaining = 256,
                             .ink_sheet = 0x0f};
  EXPECT_TEXT(parsed(reply).to_string(), reply.info_text());
}

TEST(PrinterInfo, BytesThatNoFieldTakesAreIgnored)
{
  std::set<std::size_t> const fields = {4, 5, 128, 129, 131, 132, 133, 145, 148, 149, 150, 151};
  std::string const reply = StatusReply{}.bytes();
  std::string const text = PrinterInfo::Parse(reply.data()).to_string();
  for (std::size_t offset = 0; offset < reply.size(); ++offset) {
    std::string other = reply;
    other[offset] = static_cast<char>(other[offset] ^ 0x5a);
    bool const ignored = PrinterInfo::Parse(other.data()).to_string() == text;
    ASSERT_EQ(ignored, !fields.contains(offset)) << offset;
  }
}

TEST(PrinterInfo, NothingBeyondByte151IsRead)
{
  std::string const reply = StatusReply{}.bytes();
  std::vector<char> const exact(reply.begin(), reply.begin() + 152);
  EXPECT_EQ(PrinterInfo::Parse(exact.data()).to_string(),
            PrinterInfo::Parse(reply.data()).to_string());
}

void expect_levels(StatusReply const& reply)
{
  PrinterInfo const info = parsed(reply);
  ASSERT_EQ(info.GetPrinterState() == PrinterState::InternalSupplyLow(), reply.remaining == 0);
  PrinterLevels const levels = info.GetPrinterLevels();
  ASSERT_TRUE(levels.isAvailable());
  ASSERT_EQ(levels.total_prints, reply.total);
  ASSERT_EQ(levels.remaining_prints, reply.remaining);
  ASSERT_EQ(levels.ink_sheet_type, reply.ink_sheet);
}

TEST(PrinterInfo, LevelsCarryWhatThePrinterSentAndOnlyZeroIsExhausted)
{
  for (unsigned count = 0; count < 65536 && !HasFatalFailure(); ++count) {
    expect_levels({.total = count});
    expect_levels({.remaining = count});
  }
  for (unsigned code = 0; code < 256 && !HasFatalFailure(); ++code)
    expect_levels({.ink_sheet = code});
  expect_levels({.total = 65535, .remaining = 65535, .ink_sheet = 0xff});
}

void expect_conditions(StatusReply const& reply)
{
  PrinterInfo const info = parsed(reply);
  ASSERT_TRUE(info.isAvailable());
  ASSERT_EQ(info.isWakeUp(), reply.is_awake()) << reply.power;
  ASSERT_EQ(info.isMechGood(), reply.is_mech_good()) << reply.mech[0] << " " << reply.mech[1];
  ASSERT_EQ(info.isMemoryFree(), reply.is_memory_free()) << reply.memory;
}

TEST(PrinterInfo, EveryStateByteIsGoodOrBadByTheRules)
{
  for (unsigned first = 0; first < 256 && !HasFatalFailure(); ++first) {
    expect_conditions({.power = first});
    expect_conditions({.memory = first});
    for (unsigned second = 0; second < 256 && !HasFatalFailure(); ++second)
      expect_conditions({.mech = {first, second}});
  }
}

TEST(PrinterInfo, TheStateIsTheErrorCodeUnlessNoPrintsRemain)
{
  struct {
    char const* rule;
    StatusReply reply;
    char const* state;
  } const rows[] = {
      {"the code as it was sent", {.error = {0x06, 0x02, 0x82}}, "0x06,0x02,0x82"},
      {"zeros are the good state", {.error = {0, 0, 0}}, "GOOD"},
      {"an exhausted ribbon hides a code", {.error = {6, 2, 2}, .remaining = 0}, "0xfe,0xed,0x01"},
      {"and the good state", {.remaining = 0}, "0xfe,0xed,0x01"},
      {"one print is enough", {.error = {6, 2, 2}, .remaining = 1}, "0x06,0x02,0x02"},
      {"so are 256", {.remaining = 256}, "GOOD"},
      {"an unknown count counts as prints", {.remaining = 65535}, "GOOD"},
      {"the total plays no part", {.error = {6, 2, 2}, .total = 0}, "0x06,0x02,0x02"},
  };
  for (auto const& [rule, reply, state] : rows) {
    PrinterInfo const info = parsed(reply);
    EXPECT_EQ(info.GetPrinterState().to_string(), state) << rule;
    EXPECT_NE(info.to_string().find(" error_info=[" + std::string(state) + "] levels=["),
              std::string::npos)
        << rule;
  }
}

// All that a record says of itself.
std::string said_by(PrinterInfo const& info)
{
  std::string text;
  if (info.isAvailable()) text += "available, ";
  if (info.isWakeUp()) text += "awake, ";
  if (info.isMechGood()) text += "good, ";
  if (info.isMemoryFree()) text += "free, ";
  PrinterLevels const levels = info.GetPrinterLevels();
  return text + "state " + info.GetPrinterState().to_string() + ", levels " + levels.to_string()
         + " of " + std::to_string(levels.total_prints) + ", " + info.to_string();
}

// Kept as it is: only isAvailable and the text ask for the exact type.
TEST(PrinterInfo, TheTypeDecidesWhichFieldsAreLookedAt)
{
  PrinterInfo const good = parsed({});
  PrinterInfo const bad = parsed({.power = 1, .mech = {1, 0}, .memory = 0xff, .error = {6, 2, 2}});
  std::string const no_to_all = "state UNAVAILABLE, levels UNAVAILABLE of 0, UNAVAILABLE";
  std::string const levels = "levels ink ribbon 120 / 300 ink_sheet_type=0x84 of 300";
  std::string const read_as_good = "awake, good, free, state GOOD, " + levels + ", UNKNOWN";
  struct {
    char const* rule;
    PrinterInfo info;
    std::string said;
  } const rows[] = {
      {"no reply", PrinterInfo::Unavailable(), no_to_all},
      {"made so", PrinterInfo(PrinterInfo::Type::Unavailable), no_to_all},
      {"fields of an unavailable record", retyped(good, 0), no_to_all},
      {"foreign type 2", retyped(good, 2), read_as_good},
      {"foreign type -1", retyped(good, -1), read_as_good},
      {"foreign type 256", retyped(good, 256), read_as_good},
      {"the last type", retyped(good, INT32_MAX), read_as_good},
      {"its bad states are read", retyped(bad, 2), "state 0x06,0x02,0x02, " + levels + ", UNKNOWN"},
  };
  for (auto const& row : rows) EXPECT_EQ(said_by(row.info), row.said) << row.rule;
}

TEST(PrinterInfo, ARecordMadeWithoutAReplyHoldsZeros)
{
  EXPECT_EQ(PrinterInfo(PrinterInfo::Type::Available).to_string(),
            "power_state=0x00 mech_state=[0x00,0x00] memory_state=0x00 "
            "error_info=[0xfe,0xed,0x01] levels=[ink ribbon 0 / 0 ink_sheet_type=0x00]");
}

}  // namespace
