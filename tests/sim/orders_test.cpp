// The orders of a person at the printer: what each changes, what it answers, what is refused.
#include "sim/orders.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace {

using sim::PrinterModel;
using Kind = sim::OrderResult::Kind;

struct Refused {
  char const* order;
  char const* expected;
  std::vector<std::string> values;
};

// What a line comes to, and the text that it is answered with.
std::string answer(PrinterModel& printer, std::string const& line)
{
  auto const result = run_order(printer, line);
  switch (result.kind) {
    case Kind::Nothing:
      return "nothing: " + result.text;
    case Kind::Accepted:
      return "accepted: " + result.text;
    case Kind::Refused:
      return "refused: " + result.text;
    case Kind::Quit:
      return "quit: " + result.text;
  }
  return "no such kind";
}

void expect_accepted(PrinterModel& printer, std::vector<std::string> const& lines)
{
  for (auto const& line : lines) EXPECT_EQ(answer(printer, line), "accepted: now: " + line);
}

}  // namespace

TEST(Orders, EveryOrderChangesItsFieldOnlyAndIsAcknowledgedWithTheValueItSet)
{
  PrinterModel printer;
  expect_accepted(
      printer, {"error 01 02 03", "total 65535", "remaining 0", "ink-sheet 8f", "power 07",
                "mechanism 08 09", "memory ff", "asleep 11", "reply-length 191", "fragments 100,92",
                "delay 15", "silent on", "close-after-wake-up on", "count-prints on",
                "job-status 10 11 12 0a", "job-reply-length 19"});
  EXPECT_EQ(printer.error, (std::array<std::uint8_t, 3>{0x01, 0x02, 0x03}));
  EXPECT_EQ(printer.total, 65535);
  EXPECT_EQ(printer.remaining, 0);
  EXPECT_EQ(printer.ink_sheet, 0x8f);
  EXPECT_EQ(printer.power, 0x07);
  EXPECT_EQ(printer.mechanism, (std::array<std::uint8_t, 2>{0x08, 0x09}));
  EXPECT_EQ(printer.memory, 0xff);
  EXPECT_EQ(printer.asleep, 11);
  EXPECT_EQ(printer.reply_length, 191);
  EXPECT_EQ(printer.fragments, (std::vector<std::uint16_t>{100, 92}));
  EXPECT_EQ(printer.delay, 15);
  EXPECT_TRUE(printer.silent);
  EXPECT_TRUE(printer.counts_prints);
  EXPECT_TRUE(printer.close_after_wake_up);
  EXPECT_EQ(printer.job_status, (std::array<std::uint8_t, 4>{0x10, 0x11, 0x12, 0x0a}));
  EXPECT_EQ(printer.job_reply_length, 19);
}

TEST(Orders, SwitchesAndFragmentsCanBeUndone)
{
  PrinterModel printer;
  expect_accepted(printer,
                  {"silent on", "silent off", "close-after-wake-up on", "close-after-wake-up off",
                   "count-prints off", "fragments 1,2", "fragments whole"});
  EXPECT_FALSE(printer.silent);
  EXPECT_FALSE(printer.close_after_wake_up);
  EXPECT_TRUE(printer.fragments.empty());
}

TEST(Orders, BlanksAreNoPartOfALineAndUpperCaseDigitsAreAccepted)
{
  PrinterModel printer;
  for (auto const& [line, expected] : std::vector<std::pair<std::string, std::string>>{
           {"  error \t 0A  bC FF \r", "accepted: now: error 0a bc ff"},
           {"\ttotal\t0700 ", "accepted: now: total 700"},
           {"fragments 1, 2 ,3", "accepted: now: fragments 1,2,3"},
           {"", "nothing: "},
           {" ", "nothing: "},
           {"\t\r", "nothing: "},
           {" quit ", "quit: now: quit"},
           {"quit now", "refused: quit: takes no value, got \"now\""},
       })
    EXPECT_EQ(answer(printer, line), expected) << '"' << line << '"';
}

TEST(Orders, AnUnknownOrderIsToldTheKnownOnes)
{
  PrinterModel printer;
  for (std::string const word : {"bogus", "Error", "errors", "error,"}) {
    EXPECT_EQ(answer(printer, word + " 06 02 02"),
              "refused: unknown order \"" + word
                  + "\": expected one of error, total, remaining, ink-sheet, power, mechanism, "
                    "memory, asleep, reply-length, fragments, delay, silent, close-after-wake-up, "
                    "count-prints, job-status, job-reply-length, quit");
  }
}

TEST(Orders, AWrongValueIsRefusedAndToldWhatIsExpected)
{
  PrinterModel printer;
  for (auto const& [order, expected, values] : std::vector<Refused>{
           {"error",
            "HH HH HH",
            {"", "06 02", "06 02 02 00", "060202", "6 2 2", "06,02,02", "0x 02 02", "gg 02 02",
             "-1 02 02"}},
           {"ink-sheet", "HH", {"", "100", "8", "84 84"}},
           {"mechanism", "HH HH", {"20"}},
           {"job-status", "HH HH HH HH", {"50 31 00"}},
           {"total",
            "0..65535",
            {"", "-1", "65536", "99999999999999999999", "7 0", "0x10", "12a", "+1", "1.5", "many"}},
           {"fragments",
            "N,N,...|whole",
            {"", ",", "1,", ",1", "1,,2", "0", "1,0", "1;2", "65536", "whole,1"}},
           {"silent", "on|off", {"", "yes", "ON", "on off"}},
       })
    for (auto const& value : values) {
      std::string const name = order;
      EXPECT_EQ(answer(printer, value.empty() ? name : name + ' ' + value),
                "refused: " + name + ": bad value \"" + value + "\": expected " + expected);
    }
}

TEST(Orders, ARefusedOrderChangesNothing)
{
  PrinterModel printer;
  expect_accepted(printer, {"error 06 02 02", "total 5", "fragments 1,2", "silent on"});
  for (auto const* const line :
       {"error 07 07", "error 07 07 gg", "total 9x", "total 65536", "fragments 3,x", "silent no"}) {
    EXPECT_EQ(run_order(printer, line).kind, Kind::Refused) << line;
  }
  EXPECT_EQ(printer.error, (std::array<std::uint8_t, 3>{0x06, 0x02, 0x02}));
  EXPECT_EQ(printer.total, 5);
  EXPECT_EQ(printer.fragments, (std::vector<std::uint16_t>{1, 2}));
  EXPECT_TRUE(printer.silent);
}
