// The job status reply's four bytes and the readiness they stand for.
#include "protocol/job_status.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "tests/harness/hex.h"
#include "tests/harness/retyped.h"
#include "tests/oracle/status_reply.h"

namespace {

static_assert(TypedRecord<JobStatus> && sizeof(JobStatus) == 8);

JobStatus parsed(std::array<unsigned, 4> const& status)
{
  return JobStatus::Parse(job_status_reply(status).data());
}

TEST(JobStatus, ParseTakesBytes8To11InTheirOrder)
{
  std::string const reply = "01234567\x50\x31\xc2\xfe 89abcdef";
  JobStatus const status = JobStatus::Parse(reply.data());
  EXPECT_TRUE(status.isAvailable());
  EXPECT_EQ(status.to_string(), "0x50,0x31,0xc2,0xfe");
}

TEST(JobStatus, TypeComesFirstThenTheFourBytes)
{
  JobStatus const status = parsed({0xab, 0xcd, 0xef, 0x09});
  EXPECT_EQ(first_number_of(status), 1);
  EXPECT_EQ(hex(bytes_after_type(status)), "ab cd ef 09");
}

TEST(JobStatus, NothingBeyondTheTwentyBytesIsRead)
{
  std::string const reply = job_status_reply({1, 2, 3, 4});
  std::vector<char> const exact(reply.begin(), reply.begin() + 20);
  EXPECT_EQ(JobStatus::Parse(exact.data()).to_string(), "0x01,0x02,0x03,0x04");
}

TEST(JobStatus, EveryPairOfStateBytesIsReadyByTheRule)
{
  for (unsigned first = 0; first < 256; ++first) {
    for (unsigned second = 0; second < 256; ++second) {
      bool const ready = first != 0x10 && first != 0x20 && (first != 0x50 || second >= 0x30);
      JobStatus const status = parsed({first, second, 0, 0});
      ASSERT_TRUE(status.isAvailable());
      ASSERT_EQ(status.isReady(), ready) << first << " " << second;
    }
  }
}

TEST(JobStatus, TheLastTwoBytesDoNotDecide)
{
  for (unsigned last : {0x00U, 0x10U, 0x20U, 0x50U, 0xffU}) {
    EXPECT_TRUE(parsed({0x50, 0x30, last, last}).isReady());
    EXPECT_FALSE(parsed({0x50, 0x2f, last, last}).isReady());
    EXPECT_FALSE(parsed({0x10, 0xff, last, last}).isReady());
  }
}

// Kept as it is: readiness asks only that the type is not the unavailable one.
TEST(JobStatus, TextAndReadinessFollowTheTypeThenTheBytes)
{
  struct {
    char const* rule;
    JobStatus status;
    bool available, ready;
    char const* text;
  } const rows[] = {
      {"leading zeros", parsed({0x50, 0x31, 0, 0}), true, true, "0x50,0x31,0x00,0x00"},
      {"lower case", parsed({0xab, 0x0c, 0xff, 0x80}), true, true, "0xab,0x0c,0xff,0x80"},
      {"no reply", JobStatus::Unavailable(), false, false, "UNAVAILABLE"},
      {"made so", JobStatus(JobStatus::Type::Unavailable), false, false, "UNAVAILABLE"},
      {"ready bytes", retyped(parsed({0x50, 0xff, 0, 0}), 0), false, false, "UNAVAILABLE"},
      {"foreign type 2, ready", retyped(parsed({0x50, 0x30, 0, 0}), 2), false, true, "UNKNOWN"},
      {"type -1, ready", retyped(parsed({0x50, 0x30, 0, 0}), -1), false, true, "UNKNOWN"},
      {"type 256, ready", retyped(parsed({0x50, 0x30, 0, 0}), 256), false, true, "UNKNOWN"},
      {"last type, ready", retyped(parsed({0x50, 0x30, 0, 0}), INT32_MAX), false, true, "UNKNOWN"},
      {"type 2, not ready", retyped(parsed({0x10, 0, 0, 0}), 2), false, false, "UNKNOWN"},
      {"type -1, not ready", retyped(parsed({0x10, 0, 0, 0}), -1), false, false, "UNKNOWN"},
      {"type 256, not ready", retyped(parsed({0x10, 0, 0, 0}), 256), false, false, "UNKNOWN"},
      {"last type, not ready", retyped(parsed({0x10, 0, 0, 0}), INT32_MAX), false, false,
       "UNKNOWN"},
  };
  for (auto const& [rule, status, available, ready, text] : rows) {
    EXPECT_EQ(status.isAvailable(), available) << rule;
    EXPECT_EQ(status.isReady(), ready) << rule;
    EXPECT_EQ(status.to_string(), text) << rule;
  }
}

}  // namespace
