// A standard error that does not take a message changes nothing but that message's absence.
#include <gtest/gtest.h>

#include <cerrno>
#include <numeric>

#include "tests/faults/documented_run.h"

namespace {

constexpr int ERRORS[] = {EBADF, ENOSPC, EPIPE, EIO, EINTR, EAGAIN};

std::string joined(std::vector<std::string> const& messages)
{
  return std::accumulate(messages.begin(), messages.end(), std::string());
}

// Everything but the messages is as in a run without a fault, and each message is tried once.
void expect_undisturbed(FaultedRun run)
{
  run.messages = joined(run.attempts);
  expect_as_told(run, expected_run({}, false));
}

// Each message in turn is not taken; `for_ever` says that no later one is either.
void expect_lost(bool for_ever)
{
  int const count = count_of(run_with({}, every_step()).counts, Step::Message);
  ASSERT_GT(count, 0);
  for (int index = 0; index < count && !testing::Test::HasFailure(); ++index) {
    SCOPED_TRACE(index);
    FaultedRun const run =
        run_with({Step::Message, -1, ERRORS[index % 6], index, for_ever}, every_step());
    expect_undisturbed(run);
    ASSERT_GT(run.attempts.size(), static_cast<std::size_t>(index));
    std::vector<std::string> others = run.attempts;
    others.erase(others.begin() + index, for_ever ? others.end() : others.begin() + index + 1);
    EXPECT_TEXT(run.messages, joined(others));
  }
}

TEST(StandardError, MessageThatIsNotTakenIsLostAlone) { expect_lost(false); }

TEST(StandardError, NoMessageIsTakenFromAnyOneOn) { expect_lost(true); }

FaultedRun run_with_standard_error(std::string const& path)
{
  FaultedWorld world = every_step();
  world.standard_error = path;
  return run_with({}, world);
}

TEST(StandardError, FullOneChangesNothingElse)
{
  expect_undisturbed(run_with_standard_error("/dev/full"));
}

// The command file then gets number 2, opened for reading: no message lands in it.
TEST(StandardError, ClosedOneChangesNothingElse)
{
  expect_undisturbed(run_with_standard_error("-"));
}

}  // namespace
