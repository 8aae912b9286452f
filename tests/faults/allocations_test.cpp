// A failed allocation ends the process at once and leaves whole messages behind.
#include <gtest/gtest.h>

#include <csignal>

#include "tests/harness/faulted_run.h"
#include "tests/oracle/expected_run.h"

namespace {

constexpr char const* LAST_WORDS =
    "terminate called after throwing an instance of 'std::bad_alloc'\n"
    "  what():  std::bad_alloc\n";

// The first messages of a run without a fault, as many as there are, and nothing of the next.
void expect_first_messages(std::string text, std::vector<std::string> const& all)
{
  ASSERT_TRUE(text.ends_with(LAST_WORDS)) << text;
  text.erase(text.size() - std::string(LAST_WORDS).size());
  for (std::string const& message : all) {
    if (text.empty()) return;
    ASSERT_TRUE(text.starts_with(message)) << text;
    text.erase(0, message.size());
  }
  EXPECT_EQ(text, "");
}

void expect_end_by_failed_allocation(FaultedRun const& run, FaultedRun const& faultless)
{
  EXPECT_EQ(run.signal, SIGABRT);
  expect_first_messages(run.messages, faultless.attempts);
  EXPECT_TRUE(faultless.device.starts_with(run.device));
}

void expect_no_torn_message(bool for_ever)
{
  FaultedRun const faultless = run_with({}, every_step());
  int const count = count_of(faultless.counts, Step::Allocation);
  ASSERT_GT(count, 0);
  for (int index = 0; index < count && !testing::Test::HasFailure(); ++index) {
    SCOPED_TRACE(index);
    Fault const fault{.step = Step::Allocation, .index = index, .for_ever = for_ever};
    expect_end_by_failed_allocation(run_with(fault, every_step()), faultless);
  }
}

TEST(Allocation, FailureOfOneTearsNoMessage) { expect_no_torn_message(false); }

TEST(Allocation, FailureOfOneAndAllLaterTearsNoMessage) { expect_no_torn_message(true); }

}  // namespace
