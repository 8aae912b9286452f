// The filter's lines are those of the oracle, put into the log as the scheduler puts them.
#include "admin/job_story.h"

#include "admin/log_explainer.h"
#include "admin/log_failures.h"
#include "tests/admin/logged_text.h"
#include "tests/harness/same_text.h"
#include "tests/oracle/run_text.h"

namespace {

std::string explained(std::string const& log)
{
  LogExplainer explainer({});
  std::string text = explainer.add(log);
  return text += explainer.finish();
}

// What is told between the head of a whole job and its end; lines of others stand behind the
// filter's.
std::string told_of(std::string const& messages, std::string const& others = "")
{
  std::string const head = "Job 7 on photo for ann, 22/Nov/2026:01:33:47 +0000\n";
  std::string const tail = "  Ended     Job completed.\n";
  std::string const text =
      explained(logged_begin(7) + logged(7, messages) + others + logged_end(7));
  if (!text.starts_with(head) || !text.ends_with(tail)) return text;
  return text.substr(head.size(), text.size() - head.size() - tail.size());
}

std::string failed(std::string_view cause, std::string const& text, std::string const& messages)
{
  std::string const told = told_of(messages);
  std::size_t const at = told.find("  Failed    " + text + "\n    Cause   " + std::string(cause));
  return at == std::string::npos ? told : "";
}

std::string taken_back(std::size_t reasons)
{
  return "  Reported  " + std::to_string(reasons) + " reasons taken back\n";
}

constexpr char const* GOOD_ANSWER =
    "  Answer    192 bytes\n"
    "    power_state     0x00            awake\n"
    "    mech_state      [0x00,0x00]     mechanism good\n"
    "    memory_state    0x00            memory free\n"
    "    error_info      GOOD            no error\n"
    "    ink ribbon      120 / 300       prints left of the ribbon's\n"
    "    ink_sheet_type  0x84            ribbon for 13x18(5x7\u2033)\n";

std::string const WARNING = log_head(7, 'W') + "out of paper\n";
constexpr char const* WARNING_TOLD = "  Said      out of paper\n";

std::string const LEVELS = directive_text("ReportLevels", 2);

}  // namespace

TEST(JobStory, AGoodRunIsToldInFull)
{
  StatusReply const reply;
  EXPECT_TEXT(told_of(wake_up_text() + LEVELS + awake_text(reply)
                      + level_report_text(reply.ribbon(), 40) + reasons_text()),
              "  Asked     ReportLevels, line 2 of the command file\n" + std::string(GOOD_ANSWER)
                  + "  Reported  level 40 %\n"
                    "  Reported  Prints Remaining = 120 / 300\n"
                    "  Reported  Ribbon Type: 13x18(5x7\u2033)\n"
                  + taken_back(known_reasons().size()));
}

TEST(JobStory, AReasonIsToldWithTheOthersTakenBack)
{
  EXPECT_TEXT(told_of(reasons_text(7)),
              "  Reported  reason com.velmo-error0007\n" + taken_back(known_reasons().size() - 1));
}

TEST(JobStory, ReasonsTakenBackAreToldBeforeWhatFollows)
{
  StatusReply const reply;
  for (std::string const& next : {LEVELS, query_text(reply.bytes()),
                                  level_report_text(reply.ribbon(), 40), failed_flush_text()})
    EXPECT_TEXT(told_of(wake_up_text() + "STATE: -com.velmo-error0001\n" + next),
                taken_back(1) + told_of(wake_up_text() + next));
}

TEST(JobStory, AnswersOfASleepingPrinterAreCounted)
{
  StatusReply asleep;
  asleep.power = 1;
  std::string const attempt =
      attempt_text(query_text(asleep.bytes()), asleep.info_text(), "retrying(1/60)");
  std::string const told = told_of(LEVELS + repeated(3, attempt));
  EXPECT_NE(
      told.find("  Answer    192 bytes, 3 times\n    power_state     0x01            not awake"),
      std::string::npos)
      << told;
}

TEST(JobStory, TheSameAnswerToAnotherDirectiveIsToldAgain)
{
  std::string const query = query_text(StatusReply().bytes());
  EXPECT_TEXT(told_of(LEVELS + query + directive_text("reportstatus", 3) + query),
              "  Asked     ReportLevels, line 2 of the command file\n" + std::string(GOOD_ANSWER)
                  + "  Asked     reportstatus, line 3 of the command file\n" + GOOD_ANSWER);
}

TEST(JobStory, WithoutItsQuestionAReplyIsOneOfThePrintersStatus)
{
  std::string const query = query_text(StatusReply().bytes());
  EXPECT_TEXT(told_of(query.substr(query.find("DEBUG: [STS] ")) + LEVELS),
              GOOD_ANSWER + std::string("  Asked     ReportLevels, line 2 of the command file\n"));
}

TEST(JobStory, WithoutAQuestionNothingIsKnownOfItsBytes)
{
  std::string const told = told_of(LEVELS + "DEBUG: cupsBackChannelRead() failed. ret=-1\n");
  EXPECT_EQ(told.find("by the backend's count"), std::string::npos) << told;
}

TEST(JobStory, WithoutAReplyThatIsTornTheFiltersReadingIsNotTold)
{
  EXPECT_TEXT(told_of(LEVELS + "DEBUG: printer_info=[power_state=0x00]\n"),
              "  Asked     ReportLevels, line 2 of the command file\n");
}

TEST(JobStory, ADirectiveOfAnotherKindIsSaidToBeSkipped)
{
  EXPECT_TEXT(told_of(directive_text("Clean] linenum=9", 2)),
              "  Asked     Clean] linenum=9, line 2 of the command file: none of the filter's "
              "directives, skipped\n");
}

TEST(JobStory, LevelsThatAreNoneAreExplained)
{
  EXPECT_TEXT(told_of(wake_up_text() + unavailable_levels_text()),
              "  Reported  level -2, not available: there was no usable answer\n"
              "  Reported  Ribbon Type: 00\n");
  EXPECT_TEXT(told_of(wake_up_text() + level_report_text({0xffff, 1, 0xff}, 0)),
              "  Reported  level -1, not known: a count is not known, or there is no ribbon\n");
}

TEST(JobStory, EveryFailureOfTheFilterHasItsCause)
{
  EXPECT_TEXT(failed("the backend says that the connection is one-way",
                     "Unable to retrieve supply status from printer - nobidirectional I/O "
                     "available! CUPS_SC_STATUS_OK(1)",
                     not_bidirectional_text(side_channel_status_text(1)) + wake_up_text()),
              "");
  EXPECT_TEXT(failed("the backend said nothing for 30 seconds",
                     "Unable to retrieve supply status from printer - nobidirectional I/O "
                     "available! CUPS_SC_STATUS_TIMEOUT(3)",
                     not_bidirectional_text(side_channel_status_text(3)) + wake_up_text()),
              "");
  EXPECT_TEXT(failed("the backend does not know the question",
                     "Unable to retrieve supply status from printer - nobidirectional I/O "
                     "available! UNKNOWN(-1)",
                     not_bidirectional_text(side_channel_status_text(-1)) + wake_up_text()),
              "");
  EXPECT_TEXT(
      failed("the backend has ended", "fwrite() failed. ret=0", wake_up_text(failed_write_text(0))),
      "");
  EXPECT_TEXT(
      failed("the backend has ended", "fflush() failed.", wake_up_text(failed_flush_text())), "");
  EXPECT_TEXT(failed("the backend did not send what was pending within 5 seconds",
                     "CUPS_SC_CMD_DRAIN_OUTPUT=CUPS_SC_STATUS_TIMEOUT(3)",
                     wake_up_text(failed_drain_text(side_channel_status_text(3)))),
              "");
  EXPECT_TEXT(failed("the backend did not send what was pending, or has ended",
                     "CUPS_SC_CMD_DRAIN_OUTPUT=CUPS_SC_STATUS_IO_ERROR(2)",
                     wake_up_text(failed_drain_text(side_channel_status_text(2)))),
              "");
  EXPECT_TEXT(failed("nothing came for a second", "cupsBackChannelRead() failed. ret=-1",
                     no_reply_text(-1)),
              "");
  EXPECT_TEXT(failed("the question failed", "printer_info=[UNAVAILABLE]", no_reply_text(-1)), "");
  EXPECT_TEXT(failed("61 answers", "#retry over", retry_text("DEBUG: #retry over\n")), "");
  EXPECT_TEXT(
      failed("an error code without a keyword",
             "encountered undefined error number (0x11,0x22,0x33)", reason_report_text(0x112233)),
      "");
}

TEST(JobStory, AnAnswerThatIsTooShortIsKnownByTheBackendsCount)
{
  std::string const came = "DEBUG: Received 100 bytes of back-channel data\n";
  std::string const told =
      told_of(start_text("get_printer_info") + came + came + failed_read_text(-1));
  EXPECT_TRUE(
      told.starts_with("  Answer    200 bytes, by the backend's count; not logged\n"
                       "  Failed    cupsBackChannelRead() failed. ret=-1\n"))
      << told;
  EXPECT_TRUE(told_of(came + no_reply_text(-1)).starts_with("  Failed    cupsBackChannelRead()"))
      << "bytes of an earlier question do not count";
  EXPECT_TRUE(told_of(start_text("get_printer_info")
                      + "DEBUG: Received 1 bytes of back-channel data\n" + failed_read_text(-1))
                  .starts_with("  Answer    1 bytes, by the backend's count"));
  EXPECT_TRUE(
      told_of(start_text("get_printer_info") + "DEBUG: Received nothing\n" + failed_read_text(-1))
          .starts_with("  Failed    cupsBackChannelRead()"));
}

TEST(JobStory, BytesThatCameAreToldOfAReadThatFailsOnly)
{
  EXPECT_TEXT(
      told_of(start_text("get_printer_info") + "DEBUG: Received 192 bytes of back-channel data\n",
              WARNING),
      WARNING_TOLD);
}

TEST(JobStory, AnAnswerIsToldBeforeWhatComesBehindItsLastLine)
{
  EXPECT_TEXT(
      told_of(start_text("get_printer_info") + dump_text("[STS]", StatusReply().bytes()), WARNING),
      std::string(GOOD_ANSWER) + WARNING_TOLD);
}

TEST(JobStory, AnAnswerOfWhichLinesAreMissingIsNotRead)
{
  StatusReply const reply;
  std::string text = awake_text(reply);
  std::size_t const at = text.find("DEBUG: [STS] 0040");
  text.erase(at, text.find('\n', at) + 1 - at);
  std::string const told = told_of(text);
  EXPECT_TEXT(told, "  Answer    not all of its lines are in the log\n  As read   printer_info=["
                        + reply.info_text() + "]\n");
}

TEST(JobStory, AnswersThatTheLogBreaksOffAreToldAsSuch)
{
  std::string const text = query_text(StatusReply().bytes());
  std::string const cut = text.substr(0, text.find("DEBUG: [STS] 00b0"));
  EXPECT_TEXT(told_of(cut), "  Answer    not all of its lines are in the log\n");
  EXPECT_TEXT(told_of(cut + text),
              "  Answer    not all of its lines are in the log\n" + std::string(GOOD_ANSWER));
  EXPECT_TEXT(told_of(text.substr(text.find("DEBUG: [STS] 0010"))),
              "  Answer    not all of its lines are in the log\n");
  EXPECT_TEXT(told_of(cut + text.substr(text.find("DEBUG: [STS] size"))),
              "  Answer    not all of its lines are in the log\n" + std::string(GOOD_ANSWER));
  // Long enough in its lines, too short for an answer to that question.
  EXPECT_TEXT(told_of(query_text(StatusReply().bytes(191))),
              "  Answer    not all of its lines are in the log\n");
}

TEST(JobStory, LinesOfOtherProgramsBetweenThoseOfAnAnswerDoNoHarm)
{
  std::string text = query_text(StatusReply().bytes());
  text.insert(text.find("DEBUG: [STS] 0040"), "DEBUG: Wrote 4 bytes of print data...\n");
  EXPECT_TEXT(told_of(text), GOOD_ANSWER);
}

TEST(JobStory, AJobStatusIsNotTakenForAStatus)
{
  std::string const reply = job_status_reply({0x50, 0x30, 1, 2}, 192);
  EXPECT_TEXT(told_of(start_text("get_job_status") + dump_text("[STS]", reply)),
              "  Answer    job status 0x50,0x30,0x01,0x02, ready\n");
  EXPECT_TEXT(
      told_of(start_text("get_job_status") + dump_text("[STS]", job_status_reply({0x10, 0, 0, 0}))
              + query_text(StatusReply().bytes())),
      "  Answer    job status 0x10,0x00,0x00,0x00, not ready\n" + std::string(GOOD_ANSWER));
}

TEST(JobStory, WarningsAreToldAndOtherLinesAreNot)
{
  std::string const log = logged(7, wake_up_text()) + log_head(7, 'W') + "out of \x1b[2J paper\n"
                          + log_head(7, 'D') + "argv[0]=\"photo\"\n" + log_head(7, 'd')
                          + "cupsdMarkDirty(-----s)\n";
  EXPECT_TEXT(explained(logged_begin(7) + log + logged_end(7)),
              "Job 7 on photo for ann, 22/Nov/2026:01:33:47 +0000\n"
              "  Said      out of \\x1b[2J paper\n"
              "  Ended     Job completed.\n");
}

TEST(JobStory, WithoutTheFiltersLinesItSaysHowToGetThem)
{
  EXPECT_TEXT(explained(logged_begin(7) + log_head(7, 'I')
                        + "Started filter /usr/lib/cups/filter/commandtovelmo (PID 1)\n"),
              "Job 7 on photo for ann, 22/Nov/2026:01:33:47 +0000\n"
              "  Note      the log does not hold what the filter says; cupsctl --debug-logging\n"
              "  Ended     not seen\n");
}

TEST(JobStory, NamesWithQuotesAndOrdersAreShownAsTheLogHasThem)
{
  EXPECT_TRUE(explained(log_head(7, 'I') + "Queued on \"a\\\"b\" by \"c\x1b\\\" by \\\"d\".\n"
                        + logged(7, wake_up_text()))
                  .starts_with("Job 7 on a\\\"b for c\\x1b\\\" by \\\"d, "));
}

TEST(JobStory, EachOfTheseIsAnEnd)
{
  for (std::string const line :
       {"Job completed.", "Job canceled by \"ann\".", "Job aborted due to backend errors.",
        "Job stopped due to filter errors.", "Job held by \"ann\".",
        "Stopping job because the scheduler could not execute a filter.",
        "Aborting job because it has no files.", "Printer stopped due to backend errors."})
    EXPECT_TRUE(explained(logged(7, LEVELS) + log_head(7, 'I') + line + "\n")
                    .ends_with("  Ended     " + line + "\n"))
        << line;
}

TEST(JobStory, TheLastEndCounts)
{
  std::string const held =
      log_head(7, 'I') + "Job held for 30 seconds since it could not be sent.\n";
  std::string const text =
      explained(logged_begin(7) + logged(7, LEVELS) + held + log_head(7, 'E')
                + "Job aborted after 5 unsuccessful attempts.\n" + log_head(7) + "Unloading...\n");
  EXPECT_TRUE(
      text.ends_with("command file\n  Ended     Job aborted after 5 unsuccessful attempts.\n"))
      << text;
}

TEST(JobStory, AFailureIsToldWithItsCauseAndItsCure)
{
  LogFailure const* const failure = find_log_failure("cupsBackChannelRead() failed. ret=-1");
  ASSERT_NE(failure, nullptr);
  EXPECT_TEXT(told_of(start_text("get_printer_info") + failed_read_text(-1)),
              "  Failed    cupsBackChannelRead() failed. ret=-1\n    Cause   "
                  + std::string(failure->cause) + "\n    Cure    " + std::string(failure->cure)
                  + "\n");
}

TEST(JobStory, NothingOfAFailureReachesATerminalAsAnOrder)
{
  EXPECT_TEXT(
      failed("the scheduler's spool file is gone", "Unable to open command file - : \\x1b[2J",
             wake_up_text() + "ERROR: Unable to open command file - : \x1b[2J\n"),
      "");
}
