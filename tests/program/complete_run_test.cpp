// Whole runs as they stand in the scheduler's log, written out in full.
#include <gtest/gtest.h>

#include "tests/harness/reasons_taken_back.h"
#include "tests/program/woken_run.h"

// A line of REASONS_TAKEN_BACK as a part of a longer text.
#define AS_TEXT(line) line

namespace {

TEST(CompleteRun, GoodPrinterLeavesThisLog)
{
  std::string reply(192, '\x01');
  reply[4] = reply[5] = '\0';                              // memory, power
  reply.replace(128, 2, 2, '\0');                          // mechanism
  reply.replace(131, 3, 3, '\0');                          // error
  reply[145] = '\x84';                                     // ink sheet
  reply.replace(148, 4, std::string("\x02\xbc\x01\x5e"));  // 700 in all, 350 left
  Transcript const run = run_commands("ReportLevels\n", {.replies = {{{reply}}}});
  EXPECT_TEXT(run.messages,
              "DEBUG: wr_esc_wakeup() START\n"
              "DEBUG: [CMD] size=4\n"
              "DEBUG: [CMD] 0000: 1b 45 57 55\n"
              "DEBUG: wr_esc_wakeup() END\n"
              "DEBUG: ====> command=[ReportLevels] linenum=1\n"
              "DEBUG: get_printer_info_retry() START\n"
              "DEBUG: get_printer_info() START\n"
              "DEBUG: [CMD] size=4\n"
              "DEBUG: [CMD] 0000: 1b 56 32 31\n"
              "DEBUG: [STS] size=192\n"
              "DEBUG: [STS] 0000: 01 01 01 01 00 00 01 01 01 01 01 01 01 01 01 01\n"
              "DEBUG: [STS] 0010: 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01\n"
              "DEBUG: [STS] 0020: 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01\n"
              "DEBUG: [STS] 0030: 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01\n"
              "DEBUG: [STS] 0040: 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01\n"
              "DEBUG: [STS] 0050: 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01\n"
              "DEBUG: [STS] 0060: 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01\n"
              "DEBUG: [STS] 0070: 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01\n"
              "DEBUG: [STS] 0080: 00 00 01 00 00 00 01 01 01 01 01 01 01 01 01 01\n"
              "DEBUG: [STS] 0090: 01 84 01 01 02 bc 01 5e 01 01 01 01 01 01 01 01\n"
              "DEBUG: [STS] 00a0: 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01\n"
              "DEBUG: [STS] 00b0: 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01 01\n"
              "DEBUG: get_printer_info() END\n"
              "DEBUG: printer_info=[power_state=0x00 mech_state=[0x00,0x00] memory_state=0x00 "
              "error_info=[GOOD] levels=[ink ribbon 350 / 700 ink_sheet_type=0x84]]\n"
              "DEBUG: #retry_status=[wake_up=fulfilled(0/60)]\n"
              "DEBUG: get_printer_info_retry() END\n"
              "DEBUG: [ReportLevels] ink ribbon 350 / 700 ink_sheet_type=0x84\n"
              "ATTR: marker-colors=#00FF00\n"
              "ATTR: marker-levels=50\n"
              "ATTR: marker-message=\"Prints Remaining = 350 / 700\"\n"
              "ATTR: marker-names=\"Ribbon Type: 13x18(5x7\xe2\x80\xb3)\"\n"
              "ATTR: marker-types=ink-ribbon\n" REASONS_TAKEN_BACK(AS_TEXT));
  EXPECT_TEXT(run.events,
              "request 03 00 00 00\n"
              "wait 30.000000 s on 4\n"
              "device 1b 45 57 55\n"
              "request 02 00 00 00\n"
              "wait 5.000000 s on 4\n"
              "usleep 500000\n"
              "device 1b 56 32 31\n"
              "request 02 00 00 00\n"
              "wait 5.000000 s on 4\n"
              "wait 1.000000 s on 3\n"
              "exit 0\n");
}

TEST(CompleteRun, LevelsStandBeforeReasonsAndEachDirectiveAsksAnew)
{
  StatusReply const error{.error = {6, 2, 2}};
  StatusReply const recovered{};
  expect_woken_run(run_commands("ReportLevels\nReportStatus\n",
                                {.replies = {{{error.bytes()}}, {{recovered.bytes()}}}}),
                   directive_text("ReportLevels", 1) + awake_text(error)
                       + level_report_text(error.ribbon(), 40) + reasons_text(1)
                       + directive_text("ReportStatus", 2) + awake_text(recovered) + reasons_text(),
                   query_events() + query_events());
}

}  // namespace
