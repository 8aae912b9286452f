// What holds for every run, whatever failed in it.
#pragma once

#include "tests/faults/faulted_run.h"

// Each START has its END, every write ends its line, and nothing that was taken is kept.
void expect_rules_of_every_run(FaultedRun const& run);
