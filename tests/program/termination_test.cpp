// SIGTERM, with which the scheduler cancels a job: the filter ends by it wherever it is, and
// leaves whole lines and whole commands.
#include <gtest/gtest.h>

#include <csignal>

#include "tests/harness/command_feeder.h"
#include "tests/harness/same_text.h"
#include "tests/harness/stepped_filter.h"
#include "tests/oracle/run_text.h"

namespace {

constexpr StatusReply ASLEEP{.power = 0x01};

// A wait of the run, and what stands on standard error and with the printer by then.
struct Phase {
  char const* wait;
  std::string messages;
  std::string device;
};

// The phases of a job with one "ReportStatus" for a printer that sleeps.
std::vector<Phase> phases()
{
  std::string const wake_up = command_start_text("wr_esc_wakeup", "\033EWU");
  std::string const asked = start_text("get_printer_info_retry");
  std::string const first = wake_up_text() + directive_text("ReportStatus", 1) + asked;
  std::string const answered =
      first + attempt_text(query_text(ASLEEP.bytes()), ASLEEP.info_text(), "retrying(1/60)");
  std::string const query = command_start_text("get_printer_info", "\033V21");
  return {
      {"wait 30.000000 s on 4", "", ""},
      {"wait 5.000000 s on 4", wake_up, "\033EWU"},
      {"usleep 500000", wake_up, "\033EWU"},
      {"wait 5.000000 s on 4", first + query, "\033EWU\033V21"},
      {"wait 1.000000 s on 3", first + query, "\033EWU\033V21"},
      {"sleep 1", answered, "\033EWU\033V21"},
      {"wait 5.000000 s on 4", answered + query, "\033EWU\033V21\033V21"},
      {"wait 1.000000 s on 3", answered + query, "\033EWU\033V21\033V21"},
  };
}

TEST(Termination, EndsTheRunAtOnceInEachPhase)
{
  std::vector<Phase> const all = phases();
  for (std::size_t last = 0; last < all.size(); ++last) {
    SCOPED_TRACE(last);
    SteppedFilter filter({.standard_input = "ReportStatus\n"}, {.replies = {{{ASLEEP.bytes()}}}});
    for (std::size_t i = 0; i < last; ++i) {
      ASSERT_EQ(filter.next_wait(), all[i].wait);
      filter.go_on();
    }
    ASSERT_EQ(filter.next_wait(), all[last].wait);
    EXPECT_EQ(filter.terminate(), SIGTERM);
    EXPECT_TEXT(filter.messages(), all[last].messages);
    EXPECT_TEXT(filter.device(), all[last].device);
  }
}

TEST(Termination, EndsARunWhosePrinterTakesNothing)
{
  SteppedFilter filter({.standard_input = "ReportStatus\n"}, {});
  ASSERT_EQ(filter.next_wait(), "wait 30.000000 s on 4");
  filter.fill_device();
  filter.go_on();
  std::string const wake_up = command_start_text("wr_esc_wakeup", "\033EWU");
  filter.wait_for_message(wake_up);
  EXPECT_EQ(filter.terminate(), SIGTERM);
  EXPECT_TEXT(filter.messages(), wake_up);
  EXPECT_EQ(filter.device().find('\033'), std::string::npos);
}

TEST(Termination, EndsARunWhoseCommandFileDoesNotCome)
{
  CommandFeeder const feeder([](int fifo) {
    feed_text(fifo, "Clean\n");
    for (;;) pause();
  });
  SteppedFilter filter({.arguments = {"1", "user", "title", "1", "", feeder.path()}}, {});
  for (char const* wait : {"wait 30.000000 s on 4", "wait 5.000000 s on 4", "usleep 500000"}) {
    ASSERT_EQ(filter.next_wait(), wait);
    filter.go_on();
  }
  filter.wait_for_message(directive_text("Clean", 1));
  EXPECT_EQ(filter.terminate(), SIGTERM);
  EXPECT_TEXT(filter.messages(), wake_up_text() + directive_text("Clean", 1));
  EXPECT_TEXT(filter.device(), "\033EWU");
}

}  // namespace
