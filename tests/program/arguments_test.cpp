// A command line that the filter refuses, and one that names no file that opens.
#include <gtest/gtest.h>

#include "tests/harness/run_filter.h"
#include "tests/harness/same_text.h"
#include "tests/harness/temporary_file.h"
#include "tests/oracle/run_text.h"

namespace {

Transcript run_with(std::vector<std::string> const& arguments)
{
  Job job;
  job.arguments = arguments;
  job.standard_input = "ReportStatus\n";
  return run_filter(job);
}

TEST(Arguments, FewerThanFiveOrMoreThanSixGiveTheUsageAndNothingElse)
{
  for (size_t count : {0U, 1U, 2U, 3U, 4U, 7U, 8U, 20U}) {
    SCOPED_TRACE(count);
    Transcript const run = run_with(std::vector<std::string>(count, "/dev/null"));
    EXPECT_TEXT(run.messages, "ERROR: Usage: photo-queue job-id user title copies options [file]");
    EXPECT_EQ(run.writes.size(), 1U);
    EXPECT_TEXT(run.events, exit_event(1));
  }
}

TEST(Arguments, TheFirstFiveAreCountedButNeverRead)
{
  for (std::string const argument : {"", "-h", "%s%n", "/nonexistent"}) {
    SCOPED_TRACE(argument);
    Transcript const run = run_with(std::vector<std::string>(5, argument));
    EXPECT_TEXT(run.messages, wake_up_text() + directive_text("ReportStatus", 1) + no_reply_text(-1)
                                  + unavailable_reasons_text());
    EXPECT_TEXT(run.events, probe_events() + wake_up_events() + query_events() + exit_event(0));
  }
}

TEST(Arguments, CommandFileThatDoesNotOpenEndsTheRunBeforeItsFirstRequest)
{
  struct {
    char const* path;
    char const* error;
  } const rows[] = {{"/nonexistent/commands", "No such file or directory"},
                    {"", "No such file or directory"},
                    {"/dev/null/commands", "Not a directory"}};
  for (auto const& row : rows) {
    SCOPED_TRACE(row.path);
    Transcript const run = run_with({"1", "user", "title", "1", "", row.path});
    EXPECT_TEXT(run.messages,
                std::string("ERROR: Unable to open command file - : ") + row.error + "\n");
    EXPECT_EQ(run.writes.size(), 1U);
    EXPECT_TEXT(run.events, exit_event(1));
  }
}

TEST(Arguments, TheSixthNamesTheCommandFileAndStandardInputIsNotRead)
{
  TemporaryFile const commands("Clean\n");
  Transcript const run = run_with({"1", "user", "title", "1", "", commands.path()});
  EXPECT_TEXT(run.messages, wake_up_text() + directive_text("Clean", 1));
  EXPECT_TEXT(run.events, probe_events() + wake_up_events() + exit_event(0));
}

}  // namespace
