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

// The counter says `text` in each of its three ways.
void expect_said(RetryCounter counter, std::string const& text, std::string const& rule = "")
{
  ASSERT_EQ(counter.to_string(), text) << rule;
  ASSERT_EQ(counter.isExpired(), text.starts_with("expired")) << rule;
  ASSERT_EQ(counter.isFulfilled(), text.starts_with("fulfilled")) << rule;
}

TEST(RetryCounter, FailuresAreCountedUpToTheFirstBeyondTheLimit)
{
  struct {
    char const* rule;
    unsigned limit;
    std::string attempts;  // '+' a success, '-' a failure
    char const* text;
  } const rows[] = {
      {"a fresh counter is retrying", 60, "", "retrying(0/60)"},
      {"a success fulfils without counting", 60, "+", "fulfilled(0/60)"},
      {"a failure after a success is counted", 60, "+-", "retrying(1/60)"},
      {"the limit is tolerated", 60, std::string(60, '-'), "retrying(60/60)"},
      {"the first failure beyond it expires", 60, std::string(61, '-'), "expired(61/60)"},
      {"a success does not bring it back", 1, "--+", "expired(2/1)"},
      {"an expired counter records nothing", 1, "--+-+", "expired(2/1)"},
      {"a limit of zero tolerates no failure", 0, "-", "expired(1/0)"},
      {"but a success", 0, "+", "fulfilled(0/0)"},
      {"the limit is unsigned", 4294967295u, "-", "retrying(1/4294967295)"},
  };
  for (auto const& [rule, limit, attempts, text] : rows) {
    RetryCounter counter(limit);
    for (char attempt : attempts) counter.Test(attempt == '+');
    expect_said(counter, text, rule);
  }
}

// What a counter must say after these attempts, worked out from the whole sequence:
// attempts count up to the one that makes the failures exceed the limit.
std::string expected_text(unsigned attempts, unsigned length, unsigned limit)
{
  unsigned failures = 0;
  std::string word = "retrying";
  for (unsigned i = 0; i < length && word != "expired"; ++i) {
    bool const ok = (attempts >> i) & 1u;
    if (!ok) ++failures;
    word = ok ? "fulfilled" : failures > limit ? "expired" : "retrying";
  }
  return word + "(" + std::to_string(failures) + "/" + std::to_string(limit) + ")";
}

TEST(RetryCounter, EverySequenceUpToTenAttemptsFollowsTheRules)
{
  for (unsigned limit = 0; limit <= 4; ++limit) {
    for (unsigned length = 0; length <= 10; ++length) {
      for (unsigned attempts = 0; attempts < 1u << length; ++attempts) {
        RetryCounter counter(limit);
        for (unsigned i = 0; i < length; ++i) counter.Test((attempts >> i) & 1u);
        expect_said(counter, expected_text(attempts, length, limit));
        if (HasFatalFailure()) return;
      }
    }
  }
}

}  // namespace
