// Each outside call fails once, and then for ever, at each of its places in a run.
#include <gtest/gtest.h>

#include <cerrno>

#include "tests/faults/documented_run.h"

namespace {

enum class Trace { Failure, None };  // None: the call is repeated, or its outcome is not asked for

struct Row {
  char const* name;
  Step step;
  long result;
  int error;
  Trace trace = Trace::Failure;
  bool may_last = true;  // false: libcups repeats the call for as long as it fails so
};

constexpr bool ONCE = false;

constexpr Row ROWS[] = {
    {"fwrite takes nothing", Step::DeviceWrite, 0, EIO},
    {"fwrite takes one byte", Step::DeviceWrite, 1, EIO},
    {"fwrite takes all but a byte", Step::DeviceWrite, 3, EIO},
    {"fflush finds nobody", Step::DeviceFlush, -1, EPIPE},
    {"fflush finds no room", Step::DeviceFlush, -1, ENOSPC},
    {"poll for a request times out", Step::RequestWait, 0, 0},
    {"poll for a request is interrupted", Step::RequestWait, -1, EINTR},
    {"poll for a request fails", Step::RequestWait, -1, ENOMEM},
    {"write of a request finds nobody", Step::RequestWrite, -1, EPIPE},
    {"write of a request fails", Step::RequestWrite, -1, EIO},
    {"write of a request takes half of it", Step::RequestWrite, 2, 0},
    {"write of a request is interrupted", Step::RequestWrite, -1, EINTR, Trace::None, ONCE},
    {"write of a request would block", Step::RequestWrite, -1, EAGAIN, Trace::None, ONCE},
    {"poll for an answer times out", Step::AnswerWait, 0, 0},
    {"poll for an answer fails", Step::AnswerWait, -1, ENOMEM},
    {"poll for an answer is interrupted", Step::AnswerWait, -1, EINTR, Trace::None, ONCE},
    {"read of an answer finds the end", Step::AnswerRead, 0, 0},
    {"read of an answer brings half a head", Step::AnswerRead, 2, 0},
    {"read of an answer fails", Step::AnswerRead, -1, ECONNRESET},
    {"read of an answer is interrupted", Step::AnswerRead, -1, EINTR, Trace::None, ONCE},
    {"read of an answer would block", Step::AnswerRead, -1, EAGAIN, Trace::None, ONCE},
    {"select for a reply times out", Step::ReplyWait, 0, 0},
    {"select for a reply is interrupted", Step::ReplyWait, -1, EINTR},
    {"select for a reply fails", Step::ReplyWait, -1, ENOMEM, Trace::None, ONCE},
    {"read of a reply finds the end", Step::ReplyRead, 0, 0},
    {"read of a reply fails", Step::ReplyRead, -1, EIO},
    {"read of a reply is interrupted", Step::ReplyRead, -1, EINTR},
    {"read of a reply would block", Step::ReplyRead, -1, EAGAIN},
    {"read of a reply brings one byte", Step::ReplyRead, 1, 0, Trace::None},
    {"open is not allowed", Step::FileOpen, -1, EACCES},
    {"open finds no file", Step::FileOpen, -1, ENOENT},
    {"open finds no free descriptor", Step::FileOpen, -1, EMFILE},
    {"open is interrupted", Step::FileOpen, -1, EINTR},
    {"read of the commands fails", Step::FileRead, -1, EIO},
    {"read of the commands finds a directory", Step::FileRead, -1, EISDIR},
    {"read of the commands finds the end", Step::FileRead, 0, 0},
    {"read of the commands is interrupted", Step::FileRead, -1, EINTR, Trace::None, ONCE},
    {"read of the commands brings one byte", Step::FileRead, 1, 0, Trace::None},
    {"close fails", Step::FileClose, -1, EIO, Trace::None},
    {"close is interrupted", Step::FileClose, -1, EINTR, Trace::None},
    {"sleep is cut short", Step::Sleep, 1, EINTR, Trace::None},
    {"usleep is cut short", Step::Pause, -1, EINTR, Trace::None},
};

void expect_documented_run(Row const& row, int index, bool for_ever)
{
  SCOPED_TRACE(std::string(row.name) + ", call " + std::to_string(index)
               + (for_ever ? " and all later" : ""));
  Fault const fault{row.step, row.result, row.error, index, for_ever};
  FaultedRun const run = run_with(fault, every_step());
  expect_as_told(run, expected_run(fault, row.trace == Trace::None));
  EXPECT_GT(count_of(run.counts, row.step), index);
}

void PrintTo(Row const& row, std::ostream* out) { *out << row.name; }

class Calls : public testing::TestWithParam<Row> {};

TEST_P(Calls, FailureAtEachPlaceEndsAsDocumented)
{
  Row const& row = GetParam();
  int const places = count_of(run_with({}, every_step()).counts, row.step);
  ASSERT_GT(places, 0);
  for (int index = 0; index < places && !HasFailure(); ++index) {
    expect_documented_run(row, index, false);
    if (row.may_last && !HasFailure()) expect_documented_run(row, index, true);
  }
}

std::string test_name(testing::TestParamInfo<Row> const& row)
{
  std::string name = row.param.name;
  for (char& c : name)
    if (c == ' ') c = '_';
  return name;
}

INSTANTIATE_TEST_SUITE_P(Each, Calls, testing::ValuesIn(ROWS), test_name);

TEST(StandardInput, ThatTheLibraryCannotTakeYieldsNoDirective)
{
  Fault const fault{.step = Step::StandardInput, .index = 0};
  expect_as_told(run_with(fault, every_step()), expected_run(fault, false));
}

TEST(FaultlessRun, IsAsDocumented)
{
  expect_as_told(run_with({}, every_step()), expected_run({}, false));
}

// The number of places that the tests above go through: probe, wake-up, three status queries
// and a job status query.
TEST(FaultlessRun, MakesEachCallAsOftenAsItsStepsNeed)
{
  StepCounts const counts = run_with({}, every_step()).counts;
  EXPECT_EQ(count_of(counts, Step::DeviceWrite), 5);
  EXPECT_EQ(count_of(counts, Step::DeviceFlush), 5);
  EXPECT_EQ(count_of(counts, Step::RequestWait), 6);
  EXPECT_EQ(count_of(counts, Step::RequestWrite), 6);
  EXPECT_EQ(count_of(counts, Step::AnswerWait), 6);
  EXPECT_EQ(count_of(counts, Step::AnswerRead), 6);
  EXPECT_EQ(count_of(counts, Step::ReplyWait), 5);
  EXPECT_EQ(count_of(counts, Step::ReplyRead), 5);
  EXPECT_EQ(count_of(counts, Step::FileOpen), 1);
  EXPECT_EQ(count_of(counts, Step::FileRead), 3);
  EXPECT_EQ(count_of(counts, Step::FileClose), 1);
  EXPECT_EQ(count_of(counts, Step::Sleep), 1);
  EXPECT_EQ(count_of(counts, Step::Pause), 1);
  EXPECT_GT(count_of(counts, Step::Message), 0);
  EXPECT_GT(count_of(counts, Step::Allocation), 0);
}

}  // namespace
