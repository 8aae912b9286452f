// One run of the filter in a process of its own, in which one outside call fails.
#pragma once

#include <string>
#include <vector>

#include "tests/faults/fault.h"

// The commands of every run: "ReportLevels" in line 1, comments, and "ReportStatus" in the
// line after them, which libcups gets with its second read.
inline constexpr int COMMENTS = 63;

struct FaultedRun {
  int exit_status = -1;  // negative when a signal ended the process
  int signal = 0;
  std::vector<std::string> attempts;  // what was to be written to standard error, write by write
  std::string messages;               // what stands there
  std::string device;                 // what the printer got
  CallCounts counts{};
  int descriptors_before = 0;
  int descriptors_after = 0;
  int blocks_left = 0;
};

// Runs the filter's main and after it the one query that main does not make. Ends by SIGALRM
// when that takes a minute. `standard_error` is what stands in for the file behind descriptor 2,
// a path, or "-" for a closed descriptor. The command file is named unless standard input is to
// fail.
FaultedRun run_with(Fault const& fault, std::string const& standard_error = "");
