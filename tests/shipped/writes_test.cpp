// How often a job writes to standard error: once for each line, and once for a whole dump.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "bench/player/command_file.h"
#include "bench/player/play.h"
#include "tests/harness/temporary_file.h"

namespace {

constexpr size_t WAKE_UP = 3;  // its brackets, the dump of the command
constexpr size_t QUERY = 9;    // the directive, two pairs of brackets, two dumps, two results
constexpr size_t LEVELS = 6;   // the log line, five attributes
constexpr size_t REASONS = 19;

std::vector<std::string> writes(std::string const& directive, int count)
{
  TemporaryFile const file(command_file_text(directive, count));
  return play({{FILTER_PATH}, file.path(), Messages::Packets}).messages;
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
  EXPECT_EQ(writes("ReportStatus", 1).size(), WAKE_UP + QUERY + REASONS);
  EXPECT_EQ(writes("ReportStatus", 5).size(), WAKE_UP + 5 * (QUERY + REASONS));
  EXPECT_EQ(writes("ReportLevels", 1).size(), WAKE_UP + QUERY + LEVELS + REASONS);
}

TEST(Writes, HoldWholeLines)
{
  for (std::string const& text : writes("ReportLevels", 2)) {
    EXPECT_TRUE(text.ends_with('\n')) << text;
    EXPECT_TRUE(std::count(text.begin(), text.end(), '\n') == 1 || is_dump(text)) << text;
  }
}
