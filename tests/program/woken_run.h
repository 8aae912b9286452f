// What most runs have in common: the connection is bidirectional, the printer wakes up, and the
// job ends well.
#pragma once

#include "tests/harness/run_filter.h"
#include "tests/harness/same_text.h"
#include "tests/oracle/run_text.h"

// `messages` and `events` are what such a run leaves between its wake-up and its end.
inline void expect_woken_run(Transcript const& run, std::string const& messages,
                             std::string const& events = "")
{
  EXPECT_TEXT(run.messages, wake_up_text() + messages);
  EXPECT_TEXT(run.events, probe_events() + wake_up_events() + events + exit_event(0));
}
