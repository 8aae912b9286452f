// A device stream that is dead, at the wake-up and after it.
#include <gtest/gtest.h>

#include "tests/program/woken_run.h"

namespace {

// No drain, no pause and no directive after it. The failure shows at the flush, or, without a
// buffer, at the write.
TEST(WakeUp, DeadDeviceStreamEndsTheRun)
{
  for (DeviceStream device :
       {DeviceStream::BrokenPipe, DeviceStream::FullDevice, DeviceStream::Closed})
    for (bool unbuffered : {false, true}) {
      SCOPED_TRACE(testing::Message() << "stream " << static_cast<int>(device)
                                      << (unbuffered ? " unbuffered" : " buffered"));
      Transcript const run = run_filter({.standard_input = "ReportLevels\nReportStatus\n",
                                         .device = device,
                                         .unbuffered_device = unbuffered});
      EXPECT_TEXT(run.messages,
                  wake_up_text(unbuffered ? failed_write_text(0) : failed_flush_text()));
      EXPECT_TEXT(run.events, probe_events() + exit_event(1));
    }
}

TEST(WakeUp, ItsFailureEndsARunThatIsNotBidirectionalToo)
{
  Transcript const run = run_filter({.device = DeviceStream::BrokenPipe}, {.probe = silence()});
  EXPECT_TEXT(run.messages, not_bidirectional_text("CUPS_SC_STATUS_TIMEOUT(3)")
                                + wake_up_text(failed_flush_text()));
  EXPECT_TEXT(run.events, probe_events() + exit_event(1));
}

TEST(WakeUp, DeviceStreamThatDiesAfterItLeavesThePrinterUnavailable)
{
  std::string const no_query =
      retry_text(failed_attempt_text(failed_query_text(failed_flush_text())));
  expect_woken_run(run_commands("ReportStatus\nReportLevels\n", {.hangs_up_after_wake_up = true}),
                   directive_text("ReportStatus", 1) + no_query + unavailable_reasons_text()
                       + directive_text("ReportLevels", 2) + no_query + unavailable_levels_text()
                       + unavailable_reasons_text());
}

}  // namespace
