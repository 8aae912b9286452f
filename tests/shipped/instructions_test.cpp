// How many instructions a further query takes in user space, the libraries' included.
#include <gtest/gtest.h>

#include "tests/harness/callgrind.h"
#include "tests/harness/command_file_text.h"
#include "tests/harness/temporary_file.h"
#include "tests/oracle/status_reply.h"

namespace {

constexpr int FURTHER = 10;
// 32-bit x86 hands arguments over on the stack.
constexpr double BAR = sizeof(void*) == 8 ? 25'000 : 36'000;

double instructions_of_queries(int count)
{
  TemporaryFile const commands(command_file_text("ReportStatus", count));
  return total(count_instructions(
      {.words = {FILTER_PATH, "1", "user", "title", "1", "", commands.path()},
       .answers = answers_for_queries(count),
       .replies = std::vector(static_cast<size_t>(count), StatusReply{}.bytes())}));
}

// Start, wake-up and end of a job cancel out.
double instructions_of_further_query()
{
  return (instructions_of_queries(1 + FURTHER) - instructions_of_queries(1)) / FURTHER;
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
