// The wake-up's drain and its failures, which end the run.
#include <gtest/gtest.h>

#include "tests/oracle/expected_text.h"
#include "tests/harness/run_filter.h"

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
    EXPECT_EQ(run.messages, wake_up_text("DEBUG: fflush() failed.\n"));
    EXPECT_EQ(run.events, probe_events() + exit_event(1));
  }
}

TEST(WakeUp, DeadUnbufferedDeviceStreamShowsAtTheWriteAndEndsTheRun)
{
  for (DeviceStream device : DEAD_STREAMS) {
    SCOPED_TRACE(static_cast<int>(device));
    Transcript const run = run_on(device, true);
    EXPECT_EQ(run.messages, wake_up_text("DEBUG: fwrite() failed. ret=0\n"));
    EXPECT_EQ(run.events, probe_events() + exit_event(1));
  }
}

TEST(WakeUp, ItsFailureEndsARunThatIsNotBidirectionalToo)
{
  Job job;
  job.device = DeviceStream::BrokenPipe;
  PrinterScript script;
  script.probe = silence();
  Transcript const run = run_filter(job, script);
  EXPECT_EQ(run.messages, not_bidirectional_text("CUPS_SC_STATUS_TIMEOUT(3)")
                              + wake_up_text("DEBUG: fflush() failed.\n"));
  EXPECT_EQ(run.events, probe_events() + exit_event(1));
}

void expect_drain_is_only_logged(Feed const& drain, std::string const& status)
{
  SCOPED_TRACE(status);
  PrinterScript script;
  script.drains = {drain};
  Transcript const run = run_commands("Clean\n", script);
  EXPECT_EQ(run.messages, wake_up_text(failed_drain_text(status)) + directive_text("Clean", 1));
  EXPECT_EQ(run.events, probe_events() + wake_up_events() + exit_event(0));
}

TEST(WakeUp, FailedDrainIsOnlyLogged)
{
  auto const drain = [](int status) { return Feed{side_channel_frame(SC_DRAIN_OUTPUT, status)}; };
  expect_drain_is_only_logged(drain(0), "CUPS_SC_STATUS_NONE(0)");
  expect_drain_is_only_logged(drain(2), "CUPS_SC_STATUS_IO_ERROR(2)");
  expect_drain_is_only_logged(drain(3), "CUPS_SC_STATUS_TIMEOUT(3)");
  expect_drain_is_only_logged(drain(4), "CUPS_SC_STATUS_NO_RESPONSE(4)");
  expect_drain_is_only_logged(drain(5), "CUPS_SC_STATUS_BAD_MESSAGE(5)");
  expect_drain_is_only_logged(drain(6), "CUPS_SC_STATUS_TOO_BIG(6)");
  expect_drain_is_only_logged(drain(7), "CUPS_SC_STATUS_NOT_IMPLEMENTED(7)");
  expect_drain_is_only_logged(drain(8), "UNKNOWN(8)");
  expect_drain_is_only_logged(drain(255), unnamed_status(255));
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
  EXPECT_EQ(run.messages, wake_up_text());
  EXPECT_EQ(run.events, probe_events() + wake_up_events() + exit_event(0));
}

}  // namespace
