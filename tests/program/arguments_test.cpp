// A command line that the filter refuses, and one that names no file that opens.
#include <gtest/gtest.h>

#include "tests/harness/temporary_file.h"
#include "tests/program/woken_run.h"

namespace {

Transcript run_with(std::vector<std::string> const& arguments)
{
  return run_filter({.arguments = arguments, .standard_input = "ReportStatus\n"});
}

// Without probe and wake-up.
void expect_refusal(Transcript const& run, std::string const& message)
{
  EXPECT_TEXT(run.messages, message);
  EXPECT_EQ(run.writes.size(), 1U);
  EXPECT_TEXT(run.events, exit_event(1));
}

TEST(Arguments, FewerThanFiveOrMoreThanSixGiveTheUsageAndNothingElse)
{
  for (size_t count : {0U, 1U, 2U, 3U, 4U, 7U, 8U, 20U}) {
    SCOPED_TRACE(count);
    expect_refusal(run_with(std::vector<std::string>(count, "/dev/null")),
                   "ERROR: Usage: photo-queue job-id user title copies options [file]");
  }
}

TEST(Arguments, TheFirstFiveAreCountedButNeverRead)
{
  for (std::string const argument : {"", "-h", "%s%n", "/nonexistent"}) {
    SCOPED_TRACE(argument);
    expect_woken_run(
        run_with(std::vector<std::string>(5, argument)),
        directive_text("ReportStatus", 1) + no_reply_text(-1) + unavailable_reasons_text(),
        query_events());
  }
}

TEST(Arguments, CommandFileThatDoesNotOpenEndsTheRunBeforeItsFirstRequest)
{
  struct {
    char const* path;
    std::string error;
  } const rows[] = {{"/nonexistent/commands", "No such file or directory"},
                    {"", "No such file or directory"},
                    {"/dev/null/commands", "Not a directory"}};
  for (auto const& row : rows) {
    SCOPED_TRACE(row.path);
    expect_refusal(run_with({"1", "user", "title", "1", "", row.path}),
                   "ERROR: Unable to open command file - : " + row.error + "\n");
  }
}

TEST(Arguments, TheSixthNamesTheCommandFileAndStandardInputIsNotRead)
{
  TemporaryFile const commands("Clean\n");
  expect_woken_run(run_with({"1", "user", "title", "1", "", commands.path()}),
                   directive_text("Clean", 1));
}

}  // namespace
