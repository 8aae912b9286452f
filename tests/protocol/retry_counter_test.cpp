// The counter's rules, and every short sequence of attempts against them.
#include "protocol/retry_counter.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace {

static_assert(std::is_same_v<decltype(&RetryCounter::Test), void (RetryCounter::*)(bool)>);
static_assert(std::is_same_v<decltype(&RetryCounter::isExpired), bool (RetryCounter::*)()>);
static_assert(std::is_same_v<decltype(&RetryCounter::isFulfilled), bool (RetryCounter::*)()>);
static_assert(std::is_same_v<decltype(&RetryCounter::to_string), std::string (RetryCounter::*)()>);
static_assert(!std::is_polymorphic_v<RetryCounter> && sizeof(RetryCounter) == 12);

TEST(RetryCounter, AFreshCounterIsRetrying)
{
  RetryCounter counter(60);
  EXPECT_FALSE(counter.isExpired());
  EXPECT_FALSE(counter.isFulfilled());
  EXPECT_EQ(counter.to_string(), "retrying(0/60)");
}

TEST(RetryCounter, ASuccessFulfilsWithoutCounting)
{
  RetryCounter counter(60);
  counter.Test(true);
  EXPECT_TRUE(counter.isFulfilled());
  EXPECT_FALSE(counter.isExpired());
  EXPECT_EQ(counter.to_string(), "fulfilled(0/60)");
}

TEST(RetryCounter, FailureAfterSuccessIsCounted)
{
  RetryCounter counter(60);
  counter.Test(true);
  counter.Test(false);
  EXPECT_FALSE(counter.isFulfilled());
  EXPECT_EQ(counter.to_string(), "retrying(1/60)");
}

TEST(RetryCounter, ItExpiresWithTheFirstFailureBeyondTheLimit)
{
  RetryCounter counter(60);
  for (int i = 0; i < 60; i++) counter.Test(false);
  EXPECT_FALSE(counter.isExpired());
  EXPECT_EQ(counter.to_string(), "retrying(60/60)");
  counter.Test(false);
  EXPECT_TRUE(counter.isExpired());
  EXPECT_EQ(counter.to_string(), "expired(61/60)");
}

TEST(RetryCounter, AnExpiredCounterRecordsNothing)
{
  RetryCounter counter(1);
  counter.Test(false);
  counter.Test(false);
  for (bool ok : {true, false, true}) {
    counter.Test(ok);
    EXPECT_TRUE(counter.isExpired());
    EXPECT_FALSE(counter.isFulfilled());
    EXPECT_EQ(counter.to_string(), "expired(2/1)");
  }
}

TEST(RetryCounter, ALimitOfZeroToleratesNoFailure)
{
  RetryCounter failed(0);
  failed.Test(false);
  EXPECT_EQ(failed.to_string(), "expired(1/0)");
  RetryCounter succeeded(0);
  succeeded.Test(true);
  EXPECT_EQ(succeeded.to_string(), "fulfilled(0/0)");
}

TEST(RetryCounter, TheLimitIsUnsigned)
{
  RetryCounter counter(4294967295u);
  counter.Test(false);
  EXPECT_FALSE(counter.isExpired());
  EXPECT_EQ(counter.to_string(), "retrying(1/4294967295)");
}

// What a counter must say after these attempts, worked out from the whole sequence:
// attempts count up to the one that makes the failures exceed the limit.
std::string expected_text(unsigned attempts, unsigned length, unsigned limit)
{
  unsigned failures = 0;
  std::string word = "retrying";
  for (unsigned i = 0; i < length && word != "expired"; i++) {
    bool const ok = (attempts >> i) & 1u;
    if (!ok) failures++;
    word = ok ? "fulfilled" : failures > limit ? "expired" : "retrying";
  }
  return word + "(" + std::to_string(failures) + "/" + std::to_string(limit) + ")";
}

TEST(RetryCounter, EverySequenceUpToTenAttemptsFollowsTheRules)
{
  for (unsigned limit = 0; limit <= 4; limit++) {
    for (unsigned length = 0; length <= 10; length++) {
      for (unsigned attempts = 0; attempts < 1u << length; attempts++) {
        RetryCounter counter(limit);
        for (unsigned i = 0; i < length; i++) counter.Test((attempts >> i) & 1u);
        std::string const text = expected_text(attempts, length, limit);
        ASSERT_EQ(counter.to_string(), text);
        ASSERT_EQ(counter.isExpired(), text.starts_with("expired"));
        ASSERT_EQ(counter.isFulfilled(), text.starts_with("fulfilled"));
      }
    }
  }
}

}  // namespace
