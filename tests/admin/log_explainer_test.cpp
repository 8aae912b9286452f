#include "admin/log_explainer.h"

#include "tests/admin/logged_text.h"
#include "tests/harness/same_text.h"
#include "tests/oracle/run_text.h"

namespace {

std::string explained(std::string const& log, std::optional<int> job = {})
{
  LogExplainer explainer(job);
  std::string text = explainer.add(log);
  return text += explainer.finish();
}

// A job that asks for one thing.
std::string asking(int job, std::string const& directive)
{
  return logged_begin(job) + logged(job, directive_text(directive, 1)) + logged_end(job);
}

std::string asked(int job, std::string const& directive)
{
  return "Job " + std::to_string(job)
         + " on photo for ann, 22/Nov/2026:01:33:47 +0000\n  Asked     " + directive
         + ", line 1 of the command file\n  Ended     Job completed.\n";
}

}  // namespace

TEST(LogExplainer, JobsAreToldOneAfterTheOther)
{
  EXPECT_TEXT(explained(asking(2, "ReportLevels") + asking(1, "ReportStatus")),
              asked(2, "ReportLevels") + "\n" + asked(1, "ReportStatus"));
}

TEST(LogExplainer, InterleavedJobsAreTakenApart)
{
  EXPECT_TEXT(
      explained(logged_begin(1) + logged_begin(2) + logged(1, directive_text("ReportLevels", 1))
                + logged(2, directive_text("ReportStatus", 1)) + logged_end(2) + logged_end(1)),
      asked(1, "ReportLevels") + "\n" + asked(2, "ReportStatus"));
}

TEST(LogExplainer, OneJobMayBeAskedFor)
{
  std::string const log = asking(1, "ReportLevels") + asking(2, "ReportStatus");
  EXPECT_TEXT(explained(log, 2), asked(2, "ReportStatus"));
  EXPECT_TEXT(explained(log, 3), "");
}

TEST(LogExplainer, AJobIsToldForAnyLineOfTheFilterOrAboutIt)
{
  for (std::string const line :
       {"commandtovelmo (application/vnd.cups-command to application/octet-stream, cost 0)",
        "Started filter /usr/lib/cups/filter/commandtovelmo (PID 12)",
        "Unable to start filter \"commandtovelmo\" - No such file or directory.",
        "PID 12 (/usr/lib/cups/filter/commandtovelmo) exited with no errors.",
        "wr_esc_wakeup() START", "get_printer_info() START", "get_printer_info_retry() START",
        "get_job_status() START", "====> command=[a] linenum=1", "printer_info=[UNAVAILABLE]",
        "#retry_status=[wake_up=1", "STATE: +com.velmo-error0001", "STATE: -com.velmo-error0001"})
    EXPECT_NE(explained(log_head(1) + line + "\n"), "") << line;
}

TEST(LogExplainer, JobsOfOtherFiltersAreNotTold)
{
  LogExplainer explainer({});
  std::string const log =
      logged_begin(1) + logged(1, "DEBUG: [STS] size=1\nDEBUG: [STS] 0000: 00\nDEBUG: [CMD] a\n")
      + log_head(1, 'E') + "Job aborted due to backend errors.\n";
  EXPECT_TEXT(explainer.add(log), "");
  EXPECT_TEXT(explainer.finish(), "");
  EXPECT_FALSE(explainer.hasTold());
}

TEST(LogExplainer, AMissingBeginningIsSaid)
{
  EXPECT_TEXT(explained(logged(1, directive_text("ReportLevels", 1))),
              "Job 1 (its beginning is above, or not in this log), 22/Nov/2026:01:33:47 +0000\n"
              "  Asked     ReportLevels, line 1 of the command file\n"
              "  Ended     not seen\n");
}

TEST(LogExplainer, WhatTheSchedulerRecordedBelongsToTheJobThatFailed)
{
  std::string const recorded = log_head(1) + "The following messages were recorded from a to b\n";
  std::string const stopped = "Job stopped due to filter errors; please consult the file.";
  std::string const text =
      explained(log_head(1, 'E') + stopped + "\n" + recorded + logged_begin(1)
                + logged(1, directive_text("ReportLevels", 1)) + log_head(1) + "End of messages\n");
  EXPECT_TRUE(text.starts_with("Job 1 on photo for ann, ")) << text;
  EXPECT_TRUE(text.ends_with("  Asked     ReportLevels, line 1 of the command file\n  Ended     "
                             + stopped + "\n"))
      << text;
}

TEST(LogExplainer, ANumberThatIsGivenAgainIsAnotherJob)
{
  std::string const first = asking(1, "ReportLevels");
  std::string const other = asking(2, "ReportLevels");
  EXPECT_TEXT(
      explained(first + other + asking(1, "ReportStatus")),
      asked(1, "ReportLevels") + "\n" + asked(2, "ReportLevels") + "\n" + asked(1, "ReportStatus"));
  EXPECT_TEXT(
      explained(other + first + asking(1, "ReportStatus")),
      asked(1, "ReportLevels") + "\n" + asked(2, "ReportLevels") + "\n" + asked(1, "ReportStatus"));
}

TEST(LogExplainer, TheLastLineNeedsNoEnd)
{
  std::string const log = asking(1, "ReportLevels");
  EXPECT_TEXT(explained(log.substr(0, log.size() - 1)), asked(1, "ReportLevels"));
}

TEST(LogExplainer, OfManyJobsTheOneWithoutLinesForLongestIsToldFirst)
{
  LogExplainer explainer({});
  std::string const first = asking(1, "ReportLevels");
  std::string const second = asking(2, "ReportStatus");
  std::string rest;
  for (int job = 3; job <= 64; ++job) rest += logged_begin(job);
  EXPECT_TEXT(explainer.add(first + second + rest + logged_end(1)), "");
  EXPECT_TEXT(explainer.add(logged_begin(65)), asked(2, "ReportStatus"));
  EXPECT_TEXT(explainer.finish(), "\n" + asked(1, "ReportLevels"));
}

TEST(LogExplainer, AJobThatSaysTooMuchIsToldInParts)
{
  std::string messages;
  for (int i = 0; i < 200; ++i) messages += directive_text("ReportLevels", i);
  LogExplainer explainer({});
  std::string const part = explainer.add(logged_begin(1) + logged(1, messages));
  EXPECT_TRUE(part.ends_with("line 127 of the command file\n  Ended     not seen\n")) << part;
  std::string rest = explainer.add(logged_end(1));
  rest += explainer.finish();
  EXPECT_TRUE(rest.starts_with("\nJob 1 (its beginning is above, or not in this log)")) << rest;
  EXPECT_TRUE(rest.ends_with("line 199 of the command file\n  Ended     Job completed.\n")) << rest;
}

TEST(LogExplainer, TheLogMayComeInAnyPieces)
{
  // Short, for each place costs a whole reading.
  std::string const log = "\n" + logged_begin(1) + logged(1, directive_text("ReportLevels", 1))
                          + "torn\n" + logged(2, directive_text("ReportStatus", 1)) + logged_end(1);
  std::string const whole = explained(log);
  for (std::size_t at = 0; at <= log.size(); ++at) {
    LogExplainer explainer({});
    std::string text = explainer.add(std::string_view(log).substr(0, at));
    text += explainer.add(std::string_view(log).substr(at));
    text += explainer.finish();
    ASSERT_TEXT(text, whole);
  }
}
