// How often a job writes to standard error: once for each line, and once for a whole dump.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "tests/harness/command_file_text.h"
#include "tests/harness/run_filter.h"
#include "tests/oracle/reasons.h"
#include "tests/oracle/status_reply.h"

namespace {

constexpr size_t WAKE_UP = 3;  // its brackets, the dump of the command
constexpr size_t QUERY = 9;    // the directive, two pairs of brackets, two dumps, two results
constexpr size_t LEVELS = 6;   // the log line, five attributes

size_t reasons() { return known_reasons().size(); }

std::vector<std::string> writes(std::string const& directive, int count)
{
  PrinterScript script;
  script.replies.assign(static_cast<size_t>(count), {{StatusReply{}.bytes()}});
  return run_commands(command_file_text(directive, count), script).writes;
}

bool is_dump(std::string const& text)
{
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);)
    if (!line.starts_with("DEBUG: [CMD] ") && !line.starts_with("DEBUG: [STS] ")) return false;
  return true;
}

}  // namespace

TEST(Writes, AreOneForEachLineOrDump)
{
  EXPECT_EQ(writes("ReportStatus", 1).size(), WAKE_UP + QUERY + reasons());
  EXPECT_EQ(writes("ReportStatus", 5).size(), WAKE_UP + 5 * (QUERY + reasons()));
  EXPECT_EQ(writes("ReportLevels", 1).size(), WAKE_UP + QUERY + LEVELS + reasons());
}

// Other programs of the job write to the same pipe: a line that is written in pieces may be
// torn by theirs.
TEST(Writes, HoldWholeLinesOfGoodRunsAndOfFailures)
{
  std::vector<Reply> const good(2, {{StatusReply{}.bytes()}});
  std::vector<Reply> const bad{{{StatusReply{.power = 1}.bytes()}},
                               {{StatusReply{.error = {0x11, 0x22, 0x33}}.bytes()}},
                               {{StatusReply{.power = 1}.bytes(191)}}};
  for (PrinterScript const& script :
       {PrinterScript{.replies = good},
        PrinterScript{.drains = {{side_channel_frame(SC_DRAIN_OUTPUT, 2)}}, .replies = bad}})
    for (std::string const& text : run_commands("ReportLevels\nReportStatus\n", script).writes) {
      EXPECT_TRUE(text.ends_with('\n')) << text;
      EXPECT_TRUE(std::count(text.begin(), text.end(), '\n') == 1 || is_dump(text)) << text;
    }
}
