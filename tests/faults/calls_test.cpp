// Each outside call fails once, and then for ever, at each of its places in a run.
#include <gtest/gtest.h>

#include <cerrno>

#include "tests/faults/expected_run.h"
#include "tests/faults/run_rules.h"

namespace {

enum class Trace { Failure, None };  // None: the call is repeated, or its outcome is not asked for

struct Row {
  char const* name;
  Call call;
  long result;
  int error;
  Trace trace = Trace::Failure;
  bool may_last = true;  // false: libcups repeats the call for as long as it fails so
};

constexpr bool ONCE = false;

constexpr Row ROWS[] = {
    {"fwrite takes nothing", Call::DeviceWrite, 0, EIO},
    {"fwrite takes one byte", Call::DeviceWrite, 1, EIO},
    {"fwrite takes all but a byte", Call::DeviceWrite, 3, EIO},
    {"fflush finds nobody", Call::DeviceFlush, -1, EPIPE},
    {"fflush finds no room", Call::DeviceFlush, -1, ENOSPC},
    {"poll for a request times out", Call::RequestWait, 0, 0},
    {"poll for a request is interrupted", Call::RequestWait, -1, EINTR},
    {"poll for a request fails", Call::RequestWait, -1, ENOMEM},
    {"write of a request finds nobody", Call::RequestWrite, -1, EPIPE},
    {"write of a request fails", Call::RequestWrite, -1, EIO},
    {"write of a request takes half of it", Call::RequestWrite, 2, 0},
    {"write of a request is interrupted", Call::RequestWrite, -1, EINTR, Trace::None, ONCE},
    {"write of a request would block", Call::RequestWrite, -1, EAGAIN, Trace::None, ONCE},
    {"poll for an answer times out", Call::AnswerWait, 0, 0},
    {"poll for an answer fails", Call::AnswerWait, -1, ENOMEM},
    {"poll for an answer is interrupted", Call::AnswerWait, -1, EINTR, Trace::None, ONCE},
    {"read of an answer finds the end", Call::AnswerRead, 0, 0},
    {"read of an answer brings half a head", Call::AnswerRead, 2, 0},
    {"read of an answer fails", Call::AnswerRead, -1, ECONNRESET},
    {"read of an answer is interrupted", Call::AnswerRead, -1, EINTR, Trace::None, ONCE},
    {"read of an answer would block", Call::AnswerRead, -1, EAGAIN, Trace::None, ONCE},
    {"select for a reply times out", Call::ReplyWait, 0, 0},
    {"select for a reply is interrupted", Call::ReplyWait, -1, EINTR},
    {"select for a reply fails", Call::ReplyWait, -1, ENOMEM, Trace::None, ONCE},
    {"read of a reply finds the end", Call::ReplyRead, 0, 0},
    {"read of a reply fails", Call::ReplyRead, -1, EIO},
    {"read of a reply is interrupted", Call::ReplyRead, -1, EINTR},
    {"read of a reply would block", Call::ReplyRead, -1, EAGAIN},
    {"read of a reply brings one byte", Call::ReplyRead, 1, 0, Trace::None},
    {"open is not allowed", Call::FileOpen, -1, EACCES},
    {"open finds no file", Call::FileOpen, -1, ENOENT},
    {"open finds no free descriptor", Call::FileOpen, -1, EMFILE},
    {"open is interrupted", Call::FileOpen, -1, EINTR},
    {"read of the commands fails", Call::FileRead, -1, EIO},
    {"read of the commands finds a directory", Call::FileRead, -1, EISDIR},
    {"read of the commands finds the end", Call::FileRead, 0, 0},
    {"read of the commands is interrupted", Call::FileRead, -1, EINTR, Trace::None, ONCE},
    {"read of the commands brings one byte", Call::FileRead, 1, 0, Trace::None},
    {"close fails", Call::FileClose, -1, EIO, Trace::None},
    {"close is interrupted", Call::FileClose, -1, EINTR, Trace::None},
    {"sleep is cut short", Call::Sleep, 1, EINTR, Trace::None},
    {"usleep is cut short", Call::Pause, -1, EINTR, Trace::None},
};

Fault fault_of(Row const& row, int index, bool for_ever)
{
  return {row.call, row.result, row.error, index, for_ever};
}

void expect_documented_run(Row const& row, int index, bool for_ever)
{
  SCOPED_TRACE(std::string(row.name) + ", call " + std::to_string(index)
               + (for_ever ? " and all later" : ""));
  Fault const fault = fault_of(row, index, for_ever);
  ExpectedRun const expected = expected_run(fault, row.trace == Trace::None);
  FaultedRun const run = run_with(fault);
  EXPECT_EQ(run.exit_status, expected.exit_status);
  EXPECT_EQ(run.messages, expected.messages);
  EXPECT_EQ(run.device, expected.device);
  EXPECT_GT(count_of(run.counts, row.call), index);
  expect_rules_of_every_run(run);
}

class Calls : public testing::TestWithParam<Row> {};

TEST_P(Calls, FailureAtEachPlaceEndsAsDocumented)
{
  Row const& row = GetParam();
  CallCounts const counts = run_with({}).counts;
  ASSERT_GT(count_of(counts, row.call), 0);
  for (int index = 0; index < count_of(counts, row.call); ++index) {
    expect_documented_run(row, index, false);
    if (row.may_last) expect_documented_run(row, index, true);
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
  Fault const fault{.call = Call::StandardInput, .index = 0};
  ExpectedRun const expected = expected_run(fault, false);
  FaultedRun const run = run_with(fault);
  EXPECT_EQ(run.exit_status, 0);
  EXPECT_EQ(run.messages, expected.messages);
  EXPECT_EQ(run.device, expected.device);
  expect_rules_of_every_run(run);
}

TEST(FaultlessRun, IsAsDocumented)
{
  FaultedRun const run = run_with({});
  ExpectedRun const expected = expected_run({}, false);
  EXPECT_EQ(run.exit_status, 0);
  EXPECT_EQ(run.messages, expected.messages);
  EXPECT_EQ(run.device, expected.device);
  expect_rules_of_every_run(run);
}

// The number of places that the tests above go through: probe, wake-up, three status queries
// and a job status query.
TEST(FaultlessRun, MakesEachCallAsOftenAsItsStepsNeed)
{
  CallCounts const counts = run_with({}).counts;
  EXPECT_EQ(count_of(counts, Call::DeviceWrite), 5);
  EXPECT_EQ(count_of(counts, Call::DeviceFlush), 5);
  EXPECT_EQ(count_of(counts, Call::RequestWait), 6);
  EXPECT_EQ(count_of(counts, Call::RequestWrite), 6);
  EXPECT_EQ(count_of(counts, Call::AnswerWait), 6);
  EXPECT_EQ(count_of(counts, Call::AnswerRead), 6);
  EXPECT_EQ(count_of(counts, Call::ReplyWait), 5);
  EXPECT_EQ(count_of(counts, Call::ReplyRead), 5);
  EXPECT_EQ(count_of(counts, Call::FileOpen), 1);
  EXPECT_EQ(count_of(counts, Call::FileRead), 3);
  EXPECT_EQ(count_of(counts, Call::FileClose), 1);
  EXPECT_EQ(count_of(counts, Call::Sleep), 1);
  EXPECT_EQ(count_of(counts, Call::Pause), 1);
  EXPECT_GT(count_of(counts, Call::Message), 0);
  EXPECT_GT(count_of(counts, Call::Allocation), 0);
}

}  // namespace
