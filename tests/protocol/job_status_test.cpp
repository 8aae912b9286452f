// The job status reply's four bytes and the readiness they stand for.
#include "protocol/job_status.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <type_traits>

#include "tests/harness/retyped.h"
#include "tests/oracle/status_reply.h"

namespace {

static_assert(std::is_same_v<std::underlying_type_t<JobStatus::Type>, std::int32_t>);
static_assert(!std::is_convertible_v<JobStatus::Type, std::int32_t>, "scoped enumeration");
static_assert(static_cast<int>(JobStatus::Type::Unavailable) == 0);
static_assert(static_cast<int>(JobStatus::Type::Available) == 1);
static_assert(!std::is_polymorphic_v<JobStatus> && sizeof(JobStatus) == 8);

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
  auto const bytes = bytes_of(status);
  EXPECT_EQ(bytes.at[4], 0xab);
  EXPECT_EQ(bytes.at[5], 0xcd);
  EXPECT_EQ(bytes.at[6], 0xef);
  EXPECT_EQ(bytes.at[7], 0x09);
}

TEST(JobStatus, TextIsLowerCaseWithLeadingZeros)
{
  EXPECT_EQ(parsed({0x50, 0x31, 0x00, 0x00}).to_string(), "0x50,0x31,0x00,0x00");
  EXPECT_EQ(parsed({0xab, 0x0c, 0xff, 0x80}).to_string(), "0xab,0x0c,0xff,0x80");
}

TEST(JobStatus, NothingBeyondTheTwentyBytesIsRead)
{
  std::string const reply = job_status_reply({1, 2, 3, 4});
  auto const exact = std::make_unique<char[]>(20);
  std::copy_n(reply.begin(), 20, exact.get());
  EXPECT_EQ(JobStatus::Parse(exact.get()).to_string(), "0x01,0x02,0x03,0x04");
}

TEST(JobStatus, EveryPairOfStateBytesIsReadyByTheRule)
{
  for (unsigned first = 0; first < 256; first++) {
    for (unsigned second = 0; second < 256; second++) {
      bool ready = true;
      if (first == 0x10 || first == 0x20) ready = false;
      if (first == 0x50) ready = second >= 0x30;
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

TEST(JobStatus, UnavailableIsNotReady)
{
  for (JobStatus const& status :
       {JobStatus::Unavailable(), JobStatus(JobStatus::Type::Unavailable)}) {
    EXPECT_FALSE(status.isAvailable());
    EXPECT_FALSE(status.isReady());
    EXPECT_EQ(status.to_string(), "UNAVAILABLE");
  }
}

TEST(JobStatus, BytesOfAnUnavailableRecordAreNotLookedAt)
{
  JobStatus const status = retyped(parsed({0x50, 0xff, 0, 0}), 0);
  EXPECT_FALSE(status.isReady());
  EXPECT_EQ(status.to_string(), "UNAVAILABLE");
}

// Kept as it is: readiness asks only that the type is not the unavailable one.
TEST(JobStatus, AForeignTypeIsUnavailableYetItsBytesDecideReadiness)
{
  for (int type : {2, -1, 256, INT32_MAX}) {
    JobStatus const ready = retyped(parsed({0x50, 0x30, 0, 0}), type);
    EXPECT_FALSE(ready.isAvailable()) << type;
    EXPECT_TRUE(ready.isReady()) << type;
    EXPECT_EQ(ready.to_string(), "UNKNOWN") << type;
    EXPECT_FALSE(retyped(parsed({0x10, 0, 0, 0}), type).isReady()) << type;
  }
}

}  // namespace
