// How the lines of a command file become directives.
#include <gtest/gtest.h>

#include "tests/harness/run_filter.h"
#include "tests/harness/same_text.h"
#include "tests/harness/temporary_file.h"
#include "tests/oracle/run_text.h"

namespace {

Job job_with_file(std::string const& path)
{
  Job job;
  job.arguments.push_back(path);
  return job;
}

// The run of a job whose directives make no query.
void expect_only_directives(Transcript const& run, std::string const& directives)
{
  EXPECT_TEXT(run.messages, wake_up_text() + directives);
  EXPECT_TEXT(run.events, probe_events() + wake_up_events() + exit_event(0));
}

TEST(CommandFile, EmptyOneStillProbesAndWakes)
{
  expect_only_directives(run_commands(""), "");
  TemporaryFile const empty("");
  expect_only_directives(run_filter(job_with_file(empty.path())), "");
}

TEST(CommandFile, DirectoryYieldsNoDirective)
{
  expect_only_directives(run_filter(job_with_file("/tmp")), "");
}

TEST(CommandFile, FileAndStandardInputAreReadAlike)
{
  std::string const commands = "#CUPS-COMMAND\nReportStatus\n";
  TemporaryFile const file(commands);
  StatusReply const reply{};
  PrinterScript script;
  script.replies = {{{reply.bytes()}}};
  std::string const messages =
      wake_up_text() + directive_text("ReportStatus", 2) + awake_text(reply) + reasons_text();

  EXPECT_TEXT(run_commands(commands, script).messages, messages);
  EXPECT_TEXT(run_filter(job_with_file(file.path()), script).messages, messages);
}

TEST(CommandFile, CommentsAndBlankLinesAreOnlyCounted)
{
  expect_only_directives(run_commands("# ReportStatus\n\n   \t\nFirst\n\n  #\n\nSecond\n"),
                         directive_text("First", 4) + directive_text("Second", 8));
}

TEST(CommandFile, ValueIsNeitherPrintedNorHeeded)
{
  expect_only_directives(run_commands("Clean all\nPrintSelfTestPage ReportStatus\n"),
                         directive_text("Clean", 1) + directive_text("PrintSelfTestPage", 2));
}

TEST(CommandFile, DirectiveWithAValueIsExecuted)
{
  Transcript const run = run_commands("ReportStatus now # at once\n");
  EXPECT_TEXT(run.messages, wake_up_text() + directive_text("ReportStatus", 1) + no_reply_text(-1)
                                + unavailable_reasons_text());
}

TEST(CommandFile, LastLineNeedsNoNewline)
{
  expect_only_directives(run_commands("First\nSecond"),
                         directive_text("First", 1) + directive_text("Second", 2));
}

TEST(CommandFile, CarriageReturnsEndLinesToo)
{
  expect_only_directives(run_commands("First\r\nSecond\r\n"),
                         directive_text("First", 1) + directive_text("Second", 2));
}

TEST(CommandFile, StatusDirectiveIsMatchedIgnoringCase)
{
  for (std::string const name : {"reportstatus", "REPORTSTATUS", "rEPORTsTATUS"}) {
    SCOPED_TRACE(name);
    EXPECT_TEXT(
        run_commands(name + "\n").messages,
        wake_up_text() + directive_text(name, 1) + no_reply_text(-1) + unavailable_reasons_text());
  }
}

TEST(CommandFile, LevelsDirectiveIsMatchedIgnoringCase)
{
  for (std::string const name : {"reportlevels", "REPORTLEVELS", "rEPORTlEVELS"}) {
    SCOPED_TRACE(name);
    EXPECT_TEXT(run_commands(name + "\n").messages,
                wake_up_text() + directive_text(name, 1) + no_reply_text(-1)
                    + unavailable_levels_text() + unavailable_reasons_text());
  }
}

TEST(CommandFile, UnknownDirectivesAreLoggedAndIgnored)
{
  expect_only_directives(run_commands("ReportStatu\nReportStatusX\nReport\nAutoConfigure\n%s%n\n"),
                         directive_text("ReportStatu", 1) + directive_text("ReportStatusX", 2)
                             + directive_text("Report", 3) + directive_text("AutoConfigure", 4)
                             + directive_text("%s%n", 5));
}

TEST(CommandFile, LineThatFillsTheBufferGoesOnAsTheNextLine)
{
  std::string const whole_buffer(1023, 'x');
  expect_only_directives(
      run_commands(whole_buffer + "y\nNext\n"),
      directive_text(whole_buffer, 1) + directive_text("y", 2) + directive_text("Next", 3));
}

TEST(CommandFile, EachOfManyDirectivesIsExecuted)
{
  int const count = 200;
  std::string commands;
  std::string messages = wake_up_text();
  for (int line = 1; line <= count; ++line) {
    StatusReply const reply{.remaining = static_cast<unsigned>(line)};
    commands += "ReportStatus\n";
    messages += directive_text("ReportStatus", line) + awake_text(reply) + reasons_text();
  }
  PrinterScript script;
  for (unsigned line = 1; line <= count; ++line)
    script.replies.push_back({{StatusReply{.remaining = line}.bytes()}});

  Transcript const run = run_commands(commands, script);
  EXPECT_TEXT(run.messages, messages);
  EXPECT_TEXT(run.events,
              probe_events() + wake_up_events() + repeated(count, query_events()) + exit_event(0));
}

}  // namespace
