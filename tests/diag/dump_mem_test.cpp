// The exact bytes of a dump, and that it goes out at once.
#include "diag/dump_mem.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/harness/same_text.h"
#include "tests/harness/stderr_capture.h"
#include "tests/oracle/run_text.h"

namespace {

// Bytes that go through all 256 values, starting high.
std::string sample(std::size_t size)
{
  std::string bytes(size, '\0');
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(0xf8 + i % 256);
  return bytes;
}

std::string dumped(char const* label, char const* bytes, int size)
{
  StderrCapture capture;
  dump_mem(label, bytes, size);
  return capture.take();
}

std::string dumped(char const* label, std::string const& bytes)
{
  return dumped(label, bytes.data(), static_cast<int>(bytes.size()));
}

TEST(DumpMem, ASizeLineIsFollowedByALineForEachSixteenBytes)
{
  struct {
    char const* rule;
    char const* label;
    std::string bytes;
    std::string text;
  } const rows[] = {
      {"four bytes", "[CMD]", "\033V21",
       "DEBUG: [CMD] size=4\n"
       "DEBUG: [CMD] 0000: 1b 56 32 31\n"},
      {"sixteen bytes make no empty second line", "[STS]", "0123456789abcdef",
       "DEBUG: [STS] size=16\n"
       "DEBUG: [STS] 0000: 30 31 32 33 34 35 36 37 38 39 61 62 63 64 65 66\n"},
      {"the seventeenth starts the second line", "[STS]", "0123456789abcdefg",
       "DEBUG: [STS] size=17\n"
       "DEBUG: [STS] 0000: 30 31 32 33 34 35 36 37 38 39 61 62 63 64 65 66\n"
       "DEBUG: [STS] 0010: 67\n"},
      {"high bytes are not sign-extended", "x", "\x7f\x80\xfe\xff",
       "DEBUG: x size=4\n"
       "DEBUG: x 0000: 7f 80 fe ff\n"},
      {"a label is no format", "100%s %d\t", "A",
       "DEBUG: 100%s %d\t size=1\n"
       "DEBUG: 100%s %d\t 0000: 41\n"},
      {"a label may be empty", "", "A",
       "DEBUG:  size=1\n"
       "DEBUG:  0000: 41\n"},
  };
  for (auto const& row : rows) EXPECT_TEXT(dumped(row.label, row.bytes), row.text) << row.rule;
}

TEST(DumpMem, WithoutBytesNoneIsRead)
{
  EXPECT_TEXT(dumped("[STS]", nullptr, 0),
              "DEBUG: [STS] size=0\n"
              "DEBUG: [STS] 0000:\n");
  for (int size : {-1, -2, -3, -16, INT32_MIN})
    EXPECT_TEXT(dumped("[STS]", nullptr, size), "DEBUG: [STS] size=" + std::to_string(size) + "\n");
}

TEST(DumpMem, EverySizeUpToTheLargestReplyFollowsTheRule)
{
  for (std::size_t size = 0; size <= 512; ++size) {
    ASSERT_TEXT(dumped("[STS]", sample(size)), dump_text("[STS]", sample(size))) << size;
  }
}

TEST(DumpMem, OffsetsGrowBeyondFourDigits)
{
  std::string const text = dumped("[STS]", sample(65537));
  EXPECT_EQ(text, dump_text("[STS]", sample(65537)));
  EXPECT_EQ(text.substr(text.rfind("DEBUG")), "DEBUG: [STS] 10000: f8\n");
}

TEST(DumpMem, AnOffsetTakesOneDigitMoreOnlyWhenItNeedsIt)
{
  std::string const text = dumped("[STS]", std::string((1 << 20) + 1, 'A'));
  for (char const* offset : {"fff0", "10000", "7fff0", "80000", "ffff0"}) {
    EXPECT_NE(text.find(std::string("\nDEBUG: [STS] ") + offset + ": 41"), std::string::npos)
        << offset;
  }
  EXPECT_EQ(text.substr(text.rfind("DEBUG")), "DEBUG: [STS] 100000: 41\n");
}

TEST(DumpMem, ADumpIsOneWrite)
{
  std::string const bytes = sample(512);
  StderrWrites capture;
  dump_mem("[STS]", bytes.data(), 512);
  EXPECT_EQ(capture.take().size(), 1u);
}

}  // namespace
