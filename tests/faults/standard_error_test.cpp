// A standard error that does not take a message changes nothing but that message's absence.
#include <gtest/gtest.h>

#include <cerrno>
#include <numeric>

#include "tests/faults/expected_run.h"
#include "tests/faults/run_rules.h"

namespace {

constexpr int ERRORS[] = {EBADF, ENOSPC, EPIPE, EIO, EINTR, EAGAIN};

std::string joined(std::vector<std::string> const& messages)
{
  return std::accumulate(messages.begin(), messages.end(), std::string());
}

// Everything but the messages is as in a run without a fault, and each message is tried once.
void expect_undisturbed(FaultedRun const& run)
{
  ExpectedRun const expected = expected_run({}, false);
  EXPECT_EQ(run.exit_status, 0);
  EXPECT_EQ(run.device, expected.device);
  EXPECT_EQ(joined(run.attempts), expected.messages);
  expect_rules_of_every_run(run);
}

TEST(StandardError, MessageThatIsNotTakenIsLostAlone)
{
  CallCounts const counts = run_with({}).counts;
  int error = 0;
  for (int index = 0; index < count_of(counts, Call::Message); ++index) {
    SCOPED_TRACE(index);
    FaultedRun const run = run_with({Call::Message, -1, ERRORS[error++ % 6], index});
    expect_undisturbed(run);
    std::vector<std::string> others = run.attempts;
    ASSERT_GT(others.size(), static_cast<std::size_t>(index));
    others.erase(others.begin() + index);
    EXPECT_EQ(run.messages, joined(others));
  }
}

TEST(StandardError, NoMessageIsTakenFromAnyOneOn)
{
  CallCounts const counts = run_with({}).counts;
  int error = 0;
  for (int index = 0; index < count_of(counts, Call::Message); ++index) {
    SCOPED_TRACE(index);
    FaultedRun const run = run_with({Call::Message, -1, ERRORS[error++ % 6], index, true});
    expect_undisturbed(run);
    EXPECT_EQ(run.messages, joined({run.attempts.begin(), run.attempts.begin() + index}));
  }
}

TEST(StandardError, FullOneChangesNothingElse) { expect_undisturbed(run_with({}, "/dev/full")); }

// The command file then gets number 2, opened for reading: no message lands in it.
TEST(StandardError, ClosedOneChangesNothingElse) { expect_undisturbed(run_with({}, "-")); }

}  // namespace
