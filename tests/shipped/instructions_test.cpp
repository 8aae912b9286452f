// How many instructions a further query takes in user space, the libraries' included.
#include <gtest/gtest.h>

#include "bench/player/callgrind.h"
#include "bench/player/command_file.h"
#include "tests/harness/temporary_file.h"

namespace {

constexpr int FURTHER = 10;
constexpr double BAR = 25'000;

// Start, wake-up and end of a job cancel out.
double instructions_of_further_query()
{
  TemporaryFile const one(command_file_text("ReportStatus", 1));
  TemporaryFile const many(command_file_text("ReportStatus", 1 + FURTHER));
  return (total(count_instructions(FILTER_PATH, many.path()))
          - total(count_instructions(FILTER_PATH, one.path())))
         / FURTHER;
}

}  // namespace

TEST(InstructionsOfAFurtherQuery, StayBelowTheBarAndAreTheSameWhenCountedAgain)
{
  double const counted = instructions_of_further_query();
  EXPECT_LE(counted, BAR);
  // A query cannot do without its library calls: fewer means that nothing was counted.
  EXPECT_GE(counted, 2'000);
  EXPECT_EQ(counted, instructions_of_further_query());
}
