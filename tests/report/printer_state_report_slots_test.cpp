// The "STATE:" lines with a reason table that uses all its slots. The product's own table
// never has more than one keyword a row; this one takes its place in this program.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "report/printer_state_reasons.h"
#include "report/printer_state_report.h"
#include "tests/harness/same_text.h"
#include "tests/harness/stderr_capture.h"

decltype(PRINTER_STATE_REASONS) PRINTER_STATE_REASONS = {
    {{0, 0, 0}, {}},
    {{2, 0, 0}, {"two-b", "two-a"}},
    {{3, 0, 0}, {"three-c", "three-a", "three-b"}},
    {{4, 0, 0}, {"four-d", "four-c", "four-b", "four-a"}},
    {{5, 0, 0}, {"two-a", "shared"}},        // one keyword of another row
    {{6, 0, 0}, {"same", "same"}},           // one keyword twice
    {{7, 0, 0}, {"gap", nullptr, "never"}},  // a keyword behind the end of the list
    {{8, 0, 0}, {nullptr, "never"}},         // the same, at once
    {{2, 0, 0}, {"second-match"}},           // the code of an earlier row
    {{9, 0, 0}, {"gap-longer"}},             // the longer of two with a common start
    {{10, 0, 0}, {"Upper", "\xc3\xa9"}},     // bytes around the lower-case letters
    // The rows behind have a code of zeros, which row 0 takes, and no keyword.
};

namespace {

// Every keyword of the table and the undefined error's, in ascending order of bytes.
char const* const KNOWN[] = {
    "Upper",    "com.velmo-error0023",
    "four-a",   "four-b",
    "four-c",   "four-d",
    "gap",      "gap-longer",
    "same",     "second-match",
    "shared",   "three-a",
    "three-b",  "three-c",
    "two-a",    "two-b",
    "\xc3\xa9",
};

// The additions in this order, then the removal of every other known keyword.
std::string lines(std::vector<std::string> const& added)
{
  std::string text;
  for (std::string const& keyword : added) text += "STATE: +" + keyword + "\n";
  for (char const* keyword : KNOWN) {
    if (std::find(added.begin(), added.end(), keyword) == added.end()) {
      text += std::string("STATE: -") + keyword + "\n";
    }
  }
  return text;
}

std::string reported(unsigned char first_byte)
{
  unsigned char const code[3] = {first_byte, 0, 0};
  StderrCapture capture;
  update_printer_state(PrinterState::Error(&code));
  return capture.take();
}

TEST(ReasonSlots, ARowsKeywordsAreAddedInSlotOrderAndAllOthersRemoved)
{
  struct {
    char const* rule;
    unsigned char first_byte;
    std::vector<std::string> added;
  } const rows[] = {
      {"the good state adds none", 0, {}},
      {"two keywords, and the first matching row is taken", 2, {"two-b", "two-a"}},
      {"three keywords", 3, {"three-c", "three-a", "three-b"}},
      {"a row that fills all slots needs no end", 4, {"four-d", "four-c", "four-b", "four-a"}},
      {"a keyword of two rows is known once", 5, {"two-a", "shared"}},
      {"a keyword in two slots is added twice", 6, {"same", "same"}},
      {"the first null slot ends the list", 7, {"gap"}},
      {"also when it is the first slot", 8, {}},
      {"a shorter keyword is removed before a longer one", 9, {"gap-longer"}},
      {"keywords are ordered by their bytes", 10, {"Upper", "\xc3\xa9"}},
  };
  for (auto const& row : rows) EXPECT_TEXT(reported(row.first_byte), lines(row.added)) << row.rule;
}

TEST(ReasonSlots, AnUnknownCodeAddsTheUndefinedReason)
{
  EXPECT_TEXT(reported(99), "DEBUG: encountered undefined error number (0x63,0x00,0x00)\n"
                                + lines({"com.velmo-error0023"}));
}

}  // namespace
