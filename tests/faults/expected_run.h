// What a run must leave when one outside call fails, by the rules for each call.
#pragma once

#include <string>

#include "tests/faults/fault.h"

struct ExpectedRun {
  int exit_status = 0;
  std::string messages;
  std::string device;
};

// `harmless` says that the call's failure leaves no trace: the library repeats the call, or the
// filter takes any outcome of it.
ExpectedRun expected_run(Fault const& fault, bool harmless);
