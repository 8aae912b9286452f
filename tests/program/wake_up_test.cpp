// The wake-up's drain and its failures, which end the run.
#include <gtest/gtest.h>

#include "tests/harness/run_filter.h"
#include "tests/harness/same_text.h"
#include "tests/oracle/run_text.h"

namespace {

Transcript run_on(DeviceStream device, bool unbuffered)
{
  Job job;
  job.standard_input = "ReportLevels\nReportStatus\n";
  job.device = device;
  job.unbuffered_device = unbuffered;
  return run_filter(job);
}

constexpr DeviceStream DEAD_STREAMS[] = {DeviceStream::BrokenPipe, DeviceStream::FullDevice,
                                         DeviceStream::Closed};

// No drain, no pause and no directive after it.
TEST(WakeUp, DeadDeviceStreamShowsAtTheFlushAndEndsTheRun)
{
  for (DeviceStream device : DEAD_STREAMS) {
    SCOPED_TRACE(static_cast<int>(device));
    Transcript const run = run_on(device, false);
    EXPECT_TEXT(run.messages, wake_up_text(failed_flush_text()));
    EXPECT_TEXT(run.events, probe_events() + exit_event(1));
  }
}

TEST(WakeUp, DeadUnbufferedDeviceStreamShowsAtTheWriteAndEndsTheRun)
{
  for (DeviceStream device : DEAD_STREAMS) {
    SCOPED_TRACE(static_cast<int>(device));
    Transcript const run = run_on(device, true);
    EXPECT_TEXT(run.messages, wake_up_text(failed_write_text(0)));
    EXPECT_TEXT(run.events, probe_events() + exit_event(1));
  }
}

TEST(WakeUp, ItsFailureEndsARunThatIsNotBidirectionalToo)
{
  Job job;
  job.device = DeviceStream::BrokenPipe;
  PrinterScript script;
  script.probe = silence();
  Transcript const run = run_filter(job, script);
  EXPECT_TEXT(run.messages, not_bidirectional_text("CUPS_SC_STATUS_TIMEOUT(3)")
                                + wake_up_text(failed_flush_text()));
  EXPECT_TEXT(run.events, probe_events() + exit_event(1));
}

void expect_drain_is_only_logged(Feed const& drain, std::string const& status)
{
  SCOPED_TRACE(status);
  PrinterScript script;
  script.drains = {drain};
  Transcript const run = run_commands("Clean\n", script);
  EXPECT_TEXT(run.messages, wake_up_text(failed_drain_text(status)) + directive_text("Clean", 1));
  EXPECT_TEXT(run.events, probe_events() + wake_up_events() + exit_event(0));
}

TEST(WakeUp, FailedDrainIsOnlyLogged)
{
  auto const drain = [](int status) { return Feed{side_channel_frame(SC_DRAIN_OUTPUT, status)}; };
  for (int status : {0, 2, 3, 4, 5, 6, 7, 8, 255})
    expect_drain_is_only_logged(drain(status), answered_status_text(status));
  expect_drain_is_only_logged({side_channel_frame(SC_GET_BIDI, SC_OK)},
                              "CUPS_SC_STATUS_BAD_MESSAGE(5)");
  expect_drain_is_only_logged(silence(), "CUPS_SC_STATUS_TIMEOUT(3)");
  expect_drain_is_only_logged(channel_end(), "CUPS_SC_STATUS_TIMEOUT(3)");
}

TEST(WakeUp, DataOfTheDrainsAnswerIsIgnored)
{
  PrinterScript script;
  script.drains = {{side_channel_frame(SC_DRAIN_OUTPUT, SC_OK, std::string(512, '\xff'))}};
  Transcript const run = run_commands("", script);
  EXPECT_TEXT(run.messages, wake_up_text());
  EXPECT_TEXT(run.events, probe_events() + wake_up_events() + exit_event(0));
}

}  // namespace
