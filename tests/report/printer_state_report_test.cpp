// The "STATE:" lines of every state, with the product's own reason table.
#include "report/printer_state_report.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/harness/same_text.h"
#include "tests/harness/stderr_capture.h"
#include "tests/oracle/reasons.h"

namespace {

PrinterState state_of(unsigned code)
{
  unsigned char const bytes[3] = {static_cast<unsigned char>(code >> 16),
                                  static_cast<unsigned char>(code >> 8),
                                  static_cast<unsigned char>(code)};
  return PrinterState::Error(&bytes);
}

std::string reported(PrinterState const& state)
{
  StderrCapture capture;
  update_printer_state(state);
  return capture.take();
}

TEST(PrinterStateReport, AStateAddsItsReasonAndRemovesTheOthers)
{
  unsigned char const code[3] = {0x06, 0x02, 0x02};
  std::string const undefined = "DEBUG: encountered undefined error number ";
  struct {
    char const* rule;
    PrinterState state;
    std::string text;
  } const rows[] = {
      {"a good state has none", PrinterState::Good(), reasons_text()},
      {"an unavailable state", PrinterState::Unavailable(), reasons_text(23)},
      {"its code is not looked up", {PrinterState::Type::Unavailable, &code}, reasons_text(23)},
      {"the exhausted ribbon", PrinterState::InternalSupplyLow(), reasons_text(5)},
      {"is like printer error 5", state_of(0x050202), reasons_text(5)},
      {"an unknown code is logged first", state_of(0x112233),
       undefined + "(0x11,0x22,0x33)\n" + reasons_text(23)},
      {"a foreign type is an undefined error", PrinterState(static_cast<PrinterState::Type>(2)),
       undefined + "(UNKNOWN)\n" + reasons_text(23)},
  };
  for (auto const& row : rows) EXPECT_TEXT(reported(row.state), row.text) << row.rule;
}

TEST(PrinterStateReport, EveryKnownCodeAddsItsReasonAndRemovesTheOthers)
{
  for (KnownCode const& known : known_codes())
    ASSERT_TEXT(reported(state_of(known.code)), reasons_text(known.reason))
        << code_text(known.code);
}

TEST(PrinterStateReport, CodesOneBitAwayFromAKnownOneAreNotTakenForIt)
{
  for (KnownCode const& known : known_codes())
    for (unsigned bit = 0; bit < 24; ++bit) {
      unsigned const code = known.code ^ 1U << bit;
      ASSERT_TEXT(reported(state_of(code)), reason_report_text(code)) << code_text(code);
    }
}

TEST(PrinterStateReport, NothingIsRememberedBetweenCalls)
{
  StderrCapture capture;
  update_printer_state(state_of(0x060202));
  update_printer_state(state_of(0x060202));
  update_printer_state(PrinterState::Good());
  update_printer_state(state_of(0x060202));
  EXPECT_TEXT(capture.take(), reasons_text(1) + reasons_text(1) + reasons_text() + reasons_text(1));
}

TEST(PrinterStateReport, EachLineIsOneWrite)
{
  StderrWrites capture;
  update_printer_state(state_of(0x112233));
  std::vector<std::string> const writes = capture.take();
  EXPECT_EQ(writes.size(), 1 + known_reasons().size());
  EXPECT_TRUE(each_is_one_line(writes));
}

}  // namespace
