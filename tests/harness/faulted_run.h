// One run of the filter in a process of its own, in which one outside call fails.
#pragma once

#include <string>
#include <vector>

#include "tests/harness/fault.h"
#include "tests/harness/scripted_printer.h"

// What the filter runs in.
struct FaultedWorld {
  PrinterScript printer{};
  std::string commands{};
  // What stands in for the file behind descriptor 2: a path, or "-" for a closed descriptor.
  std::string standard_error{};
};

struct FaultedRun {
  int exit_status = -1;  // negative when a signal ended the process
  int signal = 0;
  std::vector<std::string> attempts;  // what was to be written to standard error, write by write
  std::string messages;               // what stands there
  std::string device;                 // what the printer got
  StepCounts counts{};
  int descriptors_before = 0;
  int descriptors_after = 0;
  int blocks_left = 0;
};

// Runs the filter's main and after it the one query that main does not make. Ends by SIGALRM
// when that takes a minute. The command file is named unless standard input is to fail.
FaultedRun run_with(Fault const& fault, FaultedWorld const& world);
