// Descriptors that were never opened. The scheduler always gives all five of them: what it has
// no file for is /dev/null, and a job whose channels cannot be made is not started.
#include <gtest/gtest.h>

#include "tests/harness/run_filter.h"
#include "tests/harness/same_text.h"
#include "tests/harness/temporary_file.h"
#include "tests/oracle/run_text.h"

namespace {

constexpr StatusReply GOOD{};

// Some of the numbers 0 to 4.
class Closed {
public:
  explicit Closed(unsigned bits) : bits_(bits) {}
  [[nodiscard]] bool has(unsigned number) const { return (bits_ >> number & 1U) != 0; }

  [[nodiscard]] std::string digits() const
  {
    std::string text;
    for (unsigned number = 0; number < 5; ++number)
      if (has(number)) text += std::to_string(number);
    return text;
  }

  // The number that a file opened next gets.
  [[nodiscard]] Closed without_lowest() const { return Closed(bits_ & (bits_ - 1)); }

private:
  unsigned bits_;
};

Transcript run_without(std::string const& closed, std::string const& nulled, Job job)
{
  job.program = CLOSING_START_PATH;
  setenv("CLOSED_DESCRIPTORS", closed.c_str(), 1);
  setenv("NULL_DESCRIPTORS", nulled.c_str(), 1);
  return run_filter(job, {.replies = {{{GOOD.bytes()}}}});
}

struct Expected {
  std::string messages;
  std::string end = exit_event(0);
  bool query_on_closed_channel = false;
};

std::string no_answer() { return "CUPS_SC_STATUS_TIMEOUT(3)"; }

// `has_commands` tells whether the directive can be read, `query` what a query then leaves.
Expected expected_run(Closed closed, bool has_commands, std::string const& query)
{
  Expected expected;
  std::string const drain = closed.has(4) ? failed_drain_text(no_answer()) : "";
  expected.messages = closed.has(4) ? not_bidirectional_text(no_answer()) : "";
  if (closed.has(1)) {
    expected.messages += wake_up_text(failed_flush_text());
    expected.end = exit_event(1);
    return expected;
  }
  expected.messages += wake_up_text(drain);
  if (!has_commands) return expected;
  expected.messages += directive_text("ReportStatus", 1);
  expected.messages += closed.has(4) ? unavailable_reasons_text() : query;
  expected.query_on_closed_channel = !closed.has(4) && query.empty();
  return expected;
}

// libcups 2.4 asks a closed back channel for ever, which the limit of work ends, or the
// harness on a slow machine; a library that gives up instead lets the run end like one without a
// reply.
void expect_guarded_run(Transcript const& run, Closed closed, std::string const& messages)
{
  std::string const begun = messages + start_text("get_printer_info_retry")
                            + command_start_text("get_printer_info", "\033V21");
  std::string const given_up = messages + no_reply_text(-1) + unavailable_reasons_text();
  bool const ended_by_guard =
      run.events.ends_with("signal 24\n") || run.events.ends_with("signal 9\n");
  std::string const written = ended_by_guard ? begun : given_up;
  EXPECT_TEXT(run.messages, closed.has(2) ? "" : written);
  EXPECT_TRUE(ended_by_guard || run.events.ends_with(exit_event(0))) << run.events;
}

void expect_run(Transcript const& run, Closed closed, Expected const& expected)
{
  if (expected.query_on_closed_channel) {
    expect_guarded_run(run, closed, expected.messages);
    return;
  }
  EXPECT_TEXT(run.messages, closed.has(2) ? "" : expected.messages);
  EXPECT_TRUE(run.events.ends_with(expected.end)) << run.events;
}

std::string good_query() { return awake_text(GOOD) + reasons_text(); }

TEST(ClosedDescriptors, EndEachJobOnStandardInputAsDocumented)
{
  for (unsigned bits = 0; bits < 32; ++bits) {
    Closed const closed(bits);
    SCOPED_TRACE("closed: " + closed.digits());
    Transcript const run = run_without(closed.digits(), "", {.standard_input = "ReportStatus\n"});
    std::string const query = closed.has(3) ? "" : good_query();
    expect_run(run, closed, expected_run(closed, !closed.has(0), query));
  }
}

// The command file takes the lowest number that is free, opened for reading: as a device, as
// standard error and as a side channel it takes nothing, as a back channel it is at its end.
TEST(ClosedDescriptors, EndEachJobWithACommandFileAsDocumented)
{
  TemporaryFile const commands("ReportStatus\n");
  Job const job{.arguments = {"1", "user", "title", "1", "", commands.path()}};
  for (unsigned bits = 0; bits < 32; ++bits) {
    Closed const closed(bits);
    SCOPED_TRACE("closed: " + closed.digits());
    Transcript const run = run_without(closed.digits(), "", job);
    bool const file_is_back_channel = closed.has(3) && !closed.without_lowest().has(3);
    std::string query = closed.has(3) ? "" : good_query();
    if (file_is_back_channel) query = no_reply_text(0) + unavailable_reasons_text();
    expect_run(run, closed, expected_run(closed, true, query));
  }
}

// So does a person's trial run without a scheduler.
TEST(ClosedDescriptors, ChannelsOnTheNullDeviceAreAPrinterWithoutAnswer)
{
  Transcript const run = run_without("", "34", {.standard_input = "ReportStatus\n"});
  EXPECT_TEXT(run.messages, not_bidirectional_text(no_answer())
                                + wake_up_text(failed_drain_text(no_answer()))
                                + directive_text("ReportStatus", 1) + unavailable_reasons_text());
  EXPECT_TRUE(run.events.ends_with(exit_event(0))) << run.events;
}

}  // namespace
