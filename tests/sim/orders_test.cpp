// The orders of a person at the printer: what each changes, what it answers, what is refused.
#include "sim/orders.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using sim::OrderResult;
using sim::PrinterModel;
using Kind = sim::OrderResult::Kind;

struct Accepted {
  char const* line;
  char const* acknowledgement;
};

void expect_accepted(PrinterModel& printer, Accepted const& expected)
{
  auto const result = run_order(printer, expected.line);
  EXPECT_EQ(result.kind, Kind::Accepted) << expected.line << ": " << result.text;
  EXPECT_EQ(result.text, expected.acknowledgement);
}

}  // namespace

TEST(Orders, EveryOrderIsAcknowledgedWithTheValueItSet)
{
  PrinterModel printer;
  for (auto const& expected : std::vector<Accepted>{
           {"error 06 02 02", "now: error 06 02 02"},
           {"total 65535", "now: total 65535"},
           {"remaining 0", "now: remaining 0"},
           {"ink-sheet 8f", "now: ink-sheet 8f"},
           {"power 05", "now: power 05"},
           {"mechanism 20 01", "now: mechanism 20 01"},
           {"memory ff", "now: memory ff"},
           {"asleep 3", "now: asleep 3"},
           {"reply-length 191", "now: reply-length 191"},
           {"fragments 100,92", "now: fragments 100,92"},
           {"delay 5", "now: delay 5"},
           {"silent on", "now: silent on"},
           {"close-after-wake-up on", "now: close-after-wake-up on"},
           {"job-status 50 31 00 0a", "now: job-status 50 31 00 0a"},
           {"job-reply-length 19", "now: job-reply-length 19"},
       }) {
    expect_accepted(printer, expected);
  }
}

TEST(Orders, EveryOrderChangesItsFieldOnly)
{
  PrinterModel printer;
  for (auto const* const line :
       {"error 01 02 03", "total 4", "remaining 5", "ink-sheet 06", "power 07", "mechanism 08 09",
        "memory 0a", "asleep 11", "reply-length 12", "fragments 13,14", "delay 15", "silent on",
        "close-after-wake-up on", "job-status 10 11 12 13", "job-reply-length 20"}) {
    EXPECT_EQ(run_order(printer, line).kind, Kind::Accepted) << line;
  }
  EXPECT_EQ(printer.error, (std::array<std::uint8_t, 3>{0x01, 0x02, 0x03}));
  EXPECT_EQ(printer.total, 4);
  EXPECT_EQ(printer.remaining, 5);
  EXPECT_EQ(printer.ink_sheet, 0x06);
  EXPECT_EQ(printer.power, 0x07);
  EXPECT_EQ(printer.mechanism, (std::array<std::uint8_t, 2>{0x08, 0x09}));
  EXPECT_EQ(printer.memory, 0x0a);
  EXPECT_EQ(printer.asleep, 11);
  EXPECT_EQ(printer.reply_length, 12);
  EXPECT_EQ(printer.fragments, (std::vector<std::uint16_t>{13, 14}));
  EXPECT_EQ(printer.delay, 15);
  EXPECT_TRUE(printer.silent);
  EXPECT_TRUE(printer.close_after_wake_up);
  EXPECT_EQ(printer.job_status, (std::array<std::uint8_t, 4>{0x10, 0x11, 0x12, 0x13}));
  EXPECT_EQ(printer.job_reply_length, 20);
}

TEST(Orders, SwitchesAndFragmentsCanBeUndone)
{
  PrinterModel printer;
  for (auto const* const line : {"silent on", "silent off", "close-after-wake-up on",
                                 "close-after-wake-up off", "fragments 1,2", "fragments whole"}) {
    EXPECT_EQ(run_order(printer, line).text, std::string("now: ") + line);
  }
  EXPECT_FALSE(printer.silent);
  EXPECT_FALSE(printer.close_after_wake_up);
  EXPECT_TRUE(printer.fragments.empty());
}

TEST(Orders, BlanksAndUpperCaseDigitsAreAccepted)
{
  PrinterModel printer;
  expect_accepted(printer, {"  error \t 0A  bC FF \r", "now: error 0a bc ff"});
  expect_accepted(printer, {"\ttotal\t0700 ", "now: total 700"});
  expect_accepted(printer, {"fragments 1, 2 ,3", "now: fragments 1,2,3"});
}

TEST(Orders, AnEmptyLineIsNothing)
{
  PrinterModel printer;
  for (auto const* const line : {"", " ", "\t\r"}) {
    EXPECT_EQ(run_order(printer, line), (OrderResult{Kind::Nothing, ""}));
  }
}

TEST(Orders, QuitQuits)
{
  PrinterModel printer;
  EXPECT_EQ(run_order(printer, " quit "), (OrderResult{Kind::Quit, "now: quit"}));
}

TEST(Orders, QuitWithAValueIsRefused)
{
  PrinterModel printer;
  EXPECT_EQ(run_order(printer, "quit now"),
            (OrderResult{Kind::Refused, "quit: takes no value, got \"now\""}));
}

TEST(Orders, AnUnknownOrderIsToldTheKnownOnes)
{
  PrinterModel printer;
  for (std::string const word : {"bogus", "Error", "errors", "error,"}) {
    EXPECT_EQ(run_order(printer, word + " 06 02 02"),
              (OrderResult{Kind::Refused,
                           "unknown order \"" + word
                               + "\": expected one of error, total, remaining, ink-sheet, power, "
                                 "mechanism, memory, asleep, reply-length, fragments, delay, "
                                 "silent, close-after-wake-up, job-status, job-reply-length, "
                                 "quit"}));
  }
}

TEST(Orders, ARefusedValueIsToldWhatIsExpected)
{
  PrinterModel printer;
  EXPECT_EQ(run_order(printer, "error 06 02").text,
            "error: bad value \"06 02\": expected HH HH HH");
  EXPECT_EQ(run_order(printer, "total many").text, "total: bad value \"many\": expected 0..65535");
  EXPECT_EQ(run_order(printer, "silent").text, "silent: bad value \"\": expected on|off");
  EXPECT_EQ(run_order(printer, "fragments 0").text,
            "fragments: bad value \"0\": expected N,N,...|whole");
}

TEST(Orders, WrongValuesAreRefused)
{
  PrinterModel printer;
  for (auto const* const line : {
           "error",
           "error 06 02",
           "error 06 02 02 00",
           "error 060202",
           "error 6 2 2",
           "error 06,02,02",
           "error 0x 02 02",
           "error gg 02 02",
           "error -1 02 02",
           "ink-sheet",
           "ink-sheet 100",
           "ink-sheet 8",
           "ink-sheet 84 84",
           "mechanism 20",
           "job-status 50 31 00",
           "total",
           "total -1",
           "total 65536",
           "total 99999999999999999999",
           "total 7 0",
           "total 0x10",
           "total 12a",
           "total +1",
           "total 1.5",
           "fragments",
           "fragments ,",
           "fragments 1,",
           "fragments ,1",
           "fragments 1,,2",
           "fragments 0",
           "fragments 1,0",
           "fragments 1;2",
           "fragments 65536",
           "fragments whole,1",
           "silent",
           "silent yes",
           "silent ON",
           "silent on off",
       }) {
    EXPECT_EQ(run_order(printer, line).kind, Kind::Refused) << line;
  }
}

TEST(Orders, ARefusedOrderChangesNothing)
{
  PrinterModel printer;
  for (auto const* const line : {"error 06 02 02", "total 5", "fragments 1,2", "silent on"}) {
    EXPECT_EQ(run_order(printer, line).kind, Kind::Accepted);
  }
  for (auto const* const line :
       {"error 07 07", "error 07 07 gg", "total 9x", "total 65536", "fragments 3,x", "silent no"}) {
    EXPECT_EQ(run_order(printer, line).kind, Kind::Refused);
  }
  EXPECT_EQ(printer.error, (std::array<std::uint8_t, 3>{0x06, 0x02, 0x02}));
  EXPECT_EQ(printer.total, 5);
  EXPECT_EQ(printer.fragments, (std::vector<std::uint16_t>{1, 2}));
  EXPECT_TRUE(printer.silent);
}
