// The "STATE:" lines of every state, with the product's own reason table.
#include "report/printer_state_report.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>

#include "tests/report/reason_rows.h"
#include "tests/oracle/expected_texts.h"
#include "tests/harness/fake_world.h"
#include "tests/harness/stderr_capture.h"

namespace {

using Code = unsigned char[3];

std::string reported(PrinterState const& state)
{
  StderrCapture capture;
  update_printer_state(state);
  return capture.take();
}

// The lines for a code that no row holds.
std::string undefined(std::string const& text)
{
  return "DEBUG: encountered undefined error number (" + text + ")\n" + expected_states(23);
}

// The number that a code stands for, or -1 when no row holds it.
int number_of(Code const& code)
{
  auto const row = std::find_if(
      std::begin(REASON_ROWS), std::end(REASON_ROWS),
      [&](ReasonRow const& r) { return std::equal(r.code, r.code + 3, std::begin(code)); });
  return row != std::end(REASON_ROWS) ? row->number : -1;
}

std::string code_text(Code const& code)
{
  std::string text;
  for (unsigned char byte : code) {
    if (!text.empty()) text += ",";
    text += "0x" + hex(std::string(1, static_cast<char>(byte)));
  }
  return text;
}

TEST(PrinterStateReport, AGoodStateRemovesAllKnownReasons)
{
  EXPECT_EQ(reported(PrinterState::Good()),
            "STATE: -com.velmo-error0001\n"
            "STATE: -com.velmo-error0002\n"
            "STATE: -com.velmo-error0003\n"
            "STATE: -com.velmo-error0004\n"
            "STATE: -com.velmo-error0005\n"
            "STATE: -com.velmo-error0006\n"
            "STATE: -com.velmo-error0007\n"
            "STATE: -com.velmo-error0008\n"
            "STATE: -com.velmo-error0009\n"
            "STATE: -com.velmo-error0010\n"
            "STATE: -com.velmo-error0011\n"
            "STATE: -com.velmo-error0012\n"
            "STATE: -com.velmo-error0013\n"
            "STATE: -com.velmo-error0014\n"
            "STATE: -com.velmo-error0018\n"
            "STATE: -com.velmo-error0020\n"
            "STATE: -com.velmo-error0021\n"
            "STATE: -com.velmo-error0022\n"
            "STATE: -com.velmo-error0023\n");
}

TEST(PrinterStateReport, AnUnavailableStateAddsItsReasonAndRemovesTheOthers)
{
  EXPECT_EQ(reported(PrinterState::Unavailable()),
            "STATE: +com.velmo-error0023\n"
            "STATE: -com.velmo-error0001\n"
            "STATE: -com.velmo-error0002\n"
            "STATE: -com.velmo-error0003\n"
            "STATE: -com.velmo-error0004\n"
            "STATE: -com.velmo-error0005\n"
            "STATE: -com.velmo-error0006\n"
            "STATE: -com.velmo-error0007\n"
            "STATE: -com.velmo-error0008\n"
            "STATE: -com.velmo-error0009\n"
            "STATE: -com.velmo-error0010\n"
            "STATE: -com.velmo-error0011\n"
            "STATE: -com.velmo-error0012\n"
            "STATE: -com.velmo-error0013\n"
            "STATE: -com.velmo-error0014\n"
            "STATE: -com.velmo-error0018\n"
            "STATE: -com.velmo-error0020\n"
            "STATE: -com.velmo-error0021\n"
            "STATE: -com.velmo-error0022\n");
}

TEST(PrinterStateReport, AnUnavailableStatesCodeIsNotLookedUp)
{
  Code const code = {0x06, 0x02, 0x02};
  EXPECT_EQ(reported(PrinterState(PrinterState::Type::Unavailable, &code)), expected_states(23));
}

TEST(PrinterStateReport, EveryKnownCodeAddsItsReasonAndRemovesTheOthers)
{
  for (ReasonRow const& row : REASON_ROWS) {
    EXPECT_EQ(reported(PrinterState::Error(&row.code)), expected_states(row.number))
        << code_text(row.code);
  }
}

TEST(PrinterStateReport, TheExhaustedRibbonIsReportedLikePrinterError5)
{
  Code const code = {0x05, 0x02, 0x02};
  EXPECT_EQ(reported(PrinterState::InternalSupplyLow()), expected_states(5));
  EXPECT_EQ(reported(PrinterState::Error(&code)), expected_states(5));
}

TEST(PrinterStateReport, AnUnknownCodeIsLoggedFirst)
{
  Code const code = {0x11, 0x22, 0x33};
  EXPECT_EQ(reported(PrinterState::Error(&code)), undefined("0x11,0x22,0x33"));
}

TEST(PrinterStateReport, CodesOneBitAwayFromAKnownOneAreNotTakenForIt)
{
  for (ReasonRow const& row : REASON_ROWS) {
    for (unsigned bit = 0; bit < 24; bit++) {
      Code code = {row.code[0], row.code[1], row.code[2]};
      code[bit / 8] = static_cast<unsigned char>(code[bit / 8] ^ (1u << bit % 8));
      int const number = number_of(code);
      EXPECT_EQ(reported(PrinterState::Error(&code)),
                number < 0 ? undefined(code_text(code)) : expected_states(number));
    }
  }
}

TEST(PrinterStateReport, AForeignTypeIsAnUndefinedError)
{
  EXPECT_EQ(reported(PrinterState(static_cast<PrinterState::Type>(2))), undefined("UNKNOWN"));
}

TEST(PrinterStateReport, NothingIsRememberedBetweenCalls)
{
  Code const code = {0x06, 0x02, 0x02};
  StderrCapture capture;
  update_printer_state(PrinterState::Error(&code));
  update_printer_state(PrinterState::Error(&code));
  update_printer_state(PrinterState::Good());
  update_printer_state(PrinterState::Error(&code));
  EXPECT_EQ(capture.take(),
            expected_states(1) + expected_states(1) + expected_states(0) + expected_states(1));
}

TEST(PrinterStateReport, EachLineIsOneWrite)
{
  Code const code = {0x11, 0x22, 0x33};
  StderrWrites capture;
  update_printer_state(PrinterState::Error(&code));
  std::vector<std::string> const writes = capture.take();
  EXPECT_EQ(writes.size(), 20u);
  EXPECT_TRUE(each_is_one_line(writes));
}

}  // namespace
