// Command files that no scheduler writes: late, compressed, endless, binary.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "tests/harness/command_feeder.h"
#include "tests/harness/temporary_file.h"
#include "tests/program/woken_run.h"

namespace {

std::string directive_of_line(int line) { return "Directive" + std::to_string(line); }

std::string many_directives(int count)
{
  std::string text;
  for (int line = 1; line <= count; ++line) text += directive_of_line(line) + "\n";
  return text;
}

std::string many_directive_texts(int count)
{
  std::string text;
  for (int line = 1; line <= count; ++line) text += directive_text(directive_of_line(line), line);
  return text;
}

std::string compressed(std::string const& text)
{
  TemporaryFile const plain(text);
  TemporaryFile const packed("");
  // NOLINTNEXTLINE(cert-env33-c): the paths are the test's own.
  if (std::system(("gzip -n <" + plain.path() + " >" + packed.path()).c_str()) != 0)
    throw std::runtime_error("gzip");
  std::ostringstream bytes;
  bytes << std::ifstream(packed.path(), std::ios::binary).rdbuf();
  return bytes.str();
}

TEST(CommandFile, ThatComesLateAndInPiecesIsReadToItsEnd)
{
  CommandFeeder const feeder([](int fifo) {
    for (char const* piece : {"", "Fi", "rst\nSe", "cond", "\n#", "Comment\nLast"}) {
      feed_text(fifo, piece);
      wait_until_read(fifo);
    }
  });
  expect_woken_run(run_file(feeder.path()), directive_text("First", 1) + directive_text("Second", 2)
                                                + directive_text("Last", 4));
}

TEST(CommandFile, CompressedOneIsReadLikeAPlainOne)
{
  TemporaryFile const file(compressed(many_directives(2000)));
  expect_woken_run(run_file(file.path()), many_directive_texts(2000));
}

// The last line may be cut, but not torn.
void expect_first_directives(Transcript const& run, std::string const& all)
{
  std::size_t const last = run.messages.rfind("DEBUG: ", run.messages.size() - 2);
  EXPECT_TRUE(run.events.ends_with(exit_event(0))) << run.events;
  EXPECT_TRUE(run.messages.ends_with("\n"));
  EXPECT_TEXT(run.messages.substr(0, last), all.substr(0, last));
  EXPECT_GT(last, wake_up_text().size());
  EXPECT_LT(run.messages.size(), all.size());
}

TEST(CommandFile, TruncatedCompressedOneYieldsItsFirstDirectives)
{
  std::string const whole = compressed(many_directives(2000));
  std::string const all = wake_up_text() + many_directive_texts(2000);
  for (std::size_t parts : {1U, 2U, 3U, 4U, 7U}) {
    SCOPED_TRACE(parts);
    TemporaryFile const file(whole.substr(0, whole.size() * parts / 8));
    expect_first_directives(run_file(file.path()), all);
  }
}

TEST(CommandFile, CompressedOneCutAnywhereIsReadWithoutHarm)
{
  std::string const whole = compressed("First\nSecond\nThird\n");
  for (std::size_t length = 0; length < whole.size(); ++length) {
    SCOPED_TRACE(length);
    TemporaryFile const file(whole.substr(0, length));
    Transcript const run = run_file(file.path());
    EXPECT_TEXT(run.messages.substr(0, wake_up_text().size()), wake_up_text());
    EXPECT_TRUE(run.messages.ends_with("\n"));
    EXPECT_TEXT(run.events, probe_events() + wake_up_events() + exit_event(0));
  }
}

// COMMENT_MEGABYTES makes it larger; 1024 is the long run.
TEST(CommandFile, CommentsOfAnyLengthAreOnlyCounted)
{
  char const* const wanted = getenv("COMMENT_MEGABYTES");
  int const megabytes = wanted ? static_cast<int>(std::strtol(wanted, nullptr, 10)) : 64;
  int const lines_of_a_megabyte = 16384;  // 64 bytes each
  CommandFeeder const feeder([&](int fifo) {
    std::string const megabyte = repeated(lines_of_a_megabyte, "#" + std::string(62, 'x') + "\n");
    for (int i = 0; i < megabytes; ++i) feed_text(fifo, megabyte);
    feed_text(fifo, "Last\n");
  });
  expect_woken_run(run_file(feeder.path()),
                   directive_text("Last", megabytes * lines_of_a_megabyte + 1));
}

TEST(CommandFile, AMillionUnknownDirectivesAreLogged)
{
  TemporaryFile const file(many_directives(1'000'000));
  expect_woken_run(run_file(file.path()), many_directive_texts(1'000'000));
}

}  // namespace
