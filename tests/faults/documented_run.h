// What holds for every run, whatever failed in it.
#pragma once

#include "tests/harness/faulted_run.h"
#include "tests/harness/same_text.h"
#include "tests/oracle/expected_run.h"

// Messages, commands and exit status are as told. Besides, each START has its END, every write
// ends its line, and nothing that was taken is kept.
void expect_as_told(FaultedRun const& run, ExpectedRun const& expected);
