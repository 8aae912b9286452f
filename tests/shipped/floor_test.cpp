// The floor of the benchmark is one: it says, writes and asks what the filter does, and spares only
// the work in between.
#include <gtest/gtest.h>

#include "tests/harness/command_file_text.h"
#include "tests/harness/run_filter.h"
#include "tests/harness/same_text.h"
#include "tests/harness/temporary_file.h"

namespace {

// What the benchmark's printer answers: half of the ribbon is left, and all else is zero.
std::string status_reply()
{
  std::string reply(192, '\0');
  reply[145] = '\x84';
  reply.replace(148, 4, "\x02\xbc\x01\x5e");
  return reply;
}

Transcript run(char const* program, std::string const& directive)
{
  TemporaryFile const commands(command_file_text(directive, 1));
  PrinterScript script;
  script.replies.assign(1, {{status_reply()}});
  return run_filter(
      {.arguments = {"1", "user", "title", "1", "", commands.path()}, .program = program}, script);
}

std::string with_borders(std::vector<std::string> const& writes)
{
  std::string text;
  for (std::string const& written : writes) text += written + "-- end of a write\n";
  return text;
}

class Floor : public testing::TestWithParam<std::string> {};

TEST_P(Floor, LeavesTheTranscriptOfTheFilter)
{
  Transcript const floor = run(FLOOR_PATH, GetParam());
  Transcript const filter = run(FILTER_PATH, GetParam());
  EXPECT_TEXT(with_borders(floor.writes), with_borders(filter.writes));
  EXPECT_TEXT(floor.events, filter.events);
}

INSTANTIATE_TEST_SUITE_P(Directive, Floor, testing::Values("ReportLevels", "ReportStatus"),
                         [](auto const& row) { return row.param; });

}  // namespace
