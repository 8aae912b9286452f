// No directive but the documented ones: every other word of the executable is tried as one.
#include <gtest/gtest.h>

#include <cctype>
#include <fstream>
#include <iterator>
#include <set>

#include "tests/harness/temporary_file.h"
#include "tests/program/woken_run.h"

namespace {

// Runs of letters, as long as a directive may well be.
std::set<std::string> words_of(char const* path)
{
  std::ifstream file(path, std::ios::binary);
  std::set<std::string> words;
  std::string word;
  for (std::istreambuf_iterator<char> byte(file), end; byte != end; ++byte) {
    if (std::isalpha(static_cast<unsigned char>(*byte))) {
      word += *byte;
      continue;
    }
    if (word.size() >= 5 && word.size() <= 40) words.insert(word);
    word.clear();
  }
  return words;
}

TEST(Directives, AreTheDocumentedOnesAndNoOtherWordOfTheExecutable)
{
  std::set<std::string> words = words_of(FILTER_PATH);
  for (char const* documented : {"ReportLevels", "ReportStatus"})
    ASSERT_EQ(words.erase(documented), 1U) << documented;
  std::string commands;
  std::string messages;
  int line = 0;
  for (std::string const& word : words) {
    commands += word + "\n";
    messages += directive_text(word, ++line);
  }
  TemporaryFile const file(commands);
  expect_woken_run(run_file(file.path()), messages);
}

}  // namespace
