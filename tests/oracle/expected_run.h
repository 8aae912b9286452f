// What a run must leave when one outside call fails, by the rules for each call.
#pragma once

#include <string>

#include "tests/harness/fault.h"
#include "tests/harness/faulted_run.h"

struct ExpectedRun {
  int exit_status = 0;
  std::string messages{};
  std::string device{};
};

// Goes through every step: "ReportLevels" in line 1, comments, and "ReportStatus" in the line
// after them, which libcups gets with its second read. The printer is asleep at the first query,
// good at the second, and at the third has an error code that no table knows, in a reply of two
// pieces. A job status query comes last.
FaultedWorld const& every_step();

// `harmless` says that the call's failure leaves no trace: the library repeats the call, or the
// filter takes any outcome of it.
ExpectedRun expected_run(Fault const& fault, bool harmless);
