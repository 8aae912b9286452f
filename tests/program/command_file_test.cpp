// How the lines of a command file become directives.
#include <gtest/gtest.h>

#include "tests/harness/temporary_file.h"
#include "tests/program/woken_run.h"

namespace {

using namespace std::string_literals;

struct Row {
  char const* name;
  std::string commands;
  std::string messages;
  int queries = 0;
};

// Of a printer that does not answer.
std::string status_text(std::string const& directive, int line)
{
  return directive_text(directive, line) + no_reply_text(-1) + unavailable_reasons_text();
}

std::string levels_text(std::string const& directive)
{
  return directive_text(directive, 1) + no_reply_text(-1) + unavailable_levels_text()
         + unavailable_reasons_text();
}

std::string longest_lines(int count)
{
  std::string text;
  for (int line = 1; line <= count; ++line) text += directive_text(std::string(1023, 'x'), line);
  return text;
}

std::vector<Row> command_files()
{
  return {
      {"an empty one still probes and wakes", "", ""},
      {"comments and blank lines are only counted",
       "# ReportStatus\n\n   \t\nFirst\n\n  #\n\nSecond\n",
       directive_text("First", 4) + directive_text("Second", 8)},
      {"a value is neither printed nor heeded", "Clean all\nPrintSelfTestPage ReportStatus\n",
       directive_text("Clean", 1) + directive_text("PrintSelfTestPage", 2)},
      {"the last line needs no newline", "First\nSecond",
       directive_text("First", 1) + directive_text("Second", 2)},
      {"carriage returns end lines too", "First\r\nSecond\r\n",
       directive_text("First", 1) + directive_text("Second", 2)},
      {"unknown directives are logged and ignored",
       "ReportStatu\nReportStatusX\nReport\nAutoConfigure\n%s%n\n",
       directive_text("ReportStatu", 1) + directive_text("ReportStatusX", 2)
           + directive_text("Report", 3) + directive_text("AutoConfigure", 4)
           + directive_text("%s%n", 5)},
      {"a directive after a comment", "#CUPS-COMMAND\nReportStatus\n",
       status_text("ReportStatus", 2), 1},
      {"a directive with a value", "ReportStatus now # at once\n", status_text("ReportStatus", 1),
       1},
      {"small letters", "reportstatus\n", status_text("reportstatus", 1), 1},
      {"capital letters", "REPORTSTATUS\n", status_text("REPORTSTATUS", 1), 1},
      {"letters turned round", "rEPORTsTATUS\n", status_text("rEPORTsTATUS", 1), 1},
      {"the levels as documented", "ReportLevels\n", levels_text("ReportLevels"), 1},
      {"the levels in small letters", "reportlevels\n", levels_text("reportlevels"), 1},
      {"the levels in capital letters", "REPORTLEVELS\n", levels_text("REPORTLEVELS"), 1},
      {"the levels in letters turned round", "rEPORTlEVELS\n", levels_text("rEPORTlEVELS"), 1},
      // The library's line ends at the zero byte, which leaves nothing of a line that begins
      // with one.
      {"a zero byte ends a directive but not its line",
       "First\0Second\n\0ReportStatus\nThird \0\n#\0\nLast\0"s,
       directive_text("First", 1) + directive_text("Third", 3) + directive_text("Last", 5)},
      {"zero bytes alone", std::string(100000, '\0'), ""},
      {"bytes of no character set are passed on", "\xff\xfe\x80\n\x1b[31m\n",
       directive_text("\xff\xfe\x80", 1) + directive_text("\x1b[31m", 2)},
      // A line takes 1023 characters; the rest, be it nothing, counts as a line of its own.
      {"1022 characters", std::string(1022, 'x') + "\nNext\n",
       directive_text(std::string(1022, 'x'), 1) + directive_text("Next", 2)},
      {"1023 characters", std::string(1023, 'x') + "\nNext\n",
       longest_lines(1) + directive_text("Next", 3)},
      {"1024 characters", std::string(1024, 'x') + "\nNext\n",
       longest_lines(1) + directive_text("x", 2) + directive_text("Next", 3)},
      {"100,000 characters are 98 lines", std::string(100000, 'x') + "\nNext\n",
       longest_lines(97) + directive_text(std::string(769, 'x'), 98) + directive_text("Next", 99)},
  };
}

TEST(CommandFile, IsReadAlikeAsAFileAndOnStandardInput)
{
  for (Row const& row : command_files()) {
    SCOPED_TRACE(row.name);
    TemporaryFile const file(row.commands);
    std::string const events = repeated(row.queries, query_events());
    expect_woken_run(run_commands(row.commands), row.messages, events);
    expect_woken_run(run_file(file.path()), row.messages, events);
  }
}

TEST(CommandFile, DirectoryYieldsNoDirective)
{
  for (char const* path : {"/", "/tmp"}) expect_woken_run(run_file(path), "");
}

TEST(CommandFile, EachOfManyDirectivesIsExecuted)
{
  int const count = 200;
  std::string messages;
  PrinterScript script;
  for (int line = 1; line <= count; ++line) {
    StatusReply const reply{.remaining = static_cast<unsigned>(line)};
    messages += directive_text("ReportStatus", line) + awake_text(reply) + reasons_text();
    script.replies.push_back({{reply.bytes()}});
  }
  expect_woken_run(run_commands(repeated(count, "ReportStatus\n"), script), messages,
                   repeated(count, query_events()));
}

}  // namespace
