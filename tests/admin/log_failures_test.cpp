// Every message of the filter that tells of a failure has its cause and cure, and people read
// the same in docs/troubleshooting.md.
#include "admin/log_failures.h"

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "tests/harness/same_text.h"
#include "tests/oracle/run_text.h"

namespace {

std::filesystem::path const ROOT = TREE_ROOT;

std::string file_text(std::filesystem::path const& path)
{
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// The literals behind "DEBUG: " and "ERROR: " in the filter's sources, up to a line end.
std::set<std::string> messages_of_filter()
{
  std::set<std::string> found;
  for (char const* folder : {"diag", "driver", "protocol", "report"})
    for (auto const& entry : std::filesystem::directory_iterator(ROOT / folder)) {
      if (entry.path().extension() != ".cpp") continue;
      std::string const text = file_text(entry.path());
      for (std::string_view const mark : {"\"DEBUG: ", "\"ERROR: "})
        for (std::size_t at = 0; (at = text.find(mark, at)) != std::string::npos;) {
          at += mark.size();
          found.insert(text.substr(at, text.find_first_of("\"\\", at) - at));
        }
    }
  return found;
}

// What stands before the first part that a run fills in.
std::string beginning(std::string_view message)
{
  return std::string(message.substr(0, message.find("...")));
}

// What a level report leaves in the log of a printer that is awake and has no error.
std::string run_without_failure()
{
  StatusReply const reply;
  return wake_up_text() + directive_text("ReportLevels", 1) + awake_text(reply)
         + level_report_text(reply.ribbon(), level_of(reply.ribbon()));
}

bool is_told(std::string const& message)
{
  if (message.empty()) return false;
  for (LogFailure const& failure : log_failures())
    if (failure.message.starts_with(message) || beginning(failure.message) == message) return true;
  return false;
}

}  // namespace

TEST(LogFailures, EveryMessageOfTheFilterTellsOfAFailureOrIsSaidWithoutOne)
{
  std::string const run = run_without_failure();
  std::set<std::string> const messages = messages_of_filter();
  EXPECT_TRUE(messages.contains("fflush() failed."));
  for (std::string const& message : messages)
    EXPECT_TRUE(is_told(message) || run.find("\nDEBUG: " + message) != std::string::npos)
        << '"' << message << '"';
}

TEST(LogFailures, NothingThatIsSaidWithoutAFailureIsTakenForOne)
{
  std::istringstream run(run_without_failure());
  int lines = 0;
  for (std::string line; std::getline(run, line); ++lines) {
    std::string const message = line.substr(line.find(' ') + 1);
    EXPECT_EQ(find_log_failure(message), nullptr) << message;
  }
  EXPECT_GT(lines, 20);
}

TEST(LogFailures, EveryMessageOfATableRowIsSaidByTheFilter)
{
  std::set<std::string> const messages = messages_of_filter();
  for (LogFailure const& failure : log_failures()) {
    // From here on it is the scheduler and the backend that say it.
    if (failure.message.starts_with("Unable to start filter")) return;
    bool is_said = false;
    for (std::string const& message : messages)
      is_said |= !message.empty() && failure.message.starts_with(message);
    EXPECT_TRUE(is_said) << failure.message;
  }
  FAIL() << "the scheduler's own messages are not found";
}

TEST(LogFailures, TheFirstThatFitsCounts)
{
  LogFailure const* const failed_flush = find_log_failure("fflush() failed.");
  ASSERT_NE(failed_flush, nullptr);
  EXPECT_EQ(failed_flush->cause, "the backend has ended");
  EXPECT_EQ(find_log_failure("fflush() failed"), nullptr);
  for (LogFailure const& failure : log_failures())
    EXPECT_EQ(find_log_failure(failure.message), &failure) << failure.message;
}

TEST(LogFailures, TheDocumentShowsTheSameTable)
{
  std::string const document = file_text(ROOT / "docs" / "troubleshooting.md");
  std::string const head = "| Line | Cause | Cure |\n|---|---|---|\n";
  std::size_t const from = document.find(head);
  ASSERT_NE(from, std::string::npos);
  std::string table;
  for (LogFailure const& failure : log_failures())
    table += "| `" + std::string(failure.message) + "` | " + std::string(failure.cause) + " | "
             + std::string(failure.cure) + " |\n";
  EXPECT_TEXT(
      document.substr(from + head.size(), document.find("\n\n", from) + 1 - from - head.size()),
      table);
}
