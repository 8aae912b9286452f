// One whole run of the filter, with every system call taken down by strace.
#pragma once

#include <string>
#include <vector>

struct SystemCall {
  std::string name{};
  std::string arguments{};  // as strace prints them
};

struct TracedRun {
  int exit_status = -1;
  std::string messages{};
  std::string command_file{};  // its path
  // From the first thing that main does, which is to ignore SIGPIPE.
  std::vector<SystemCall> calls{};
};

// Runs the filter on a command file with both directives, before a printer that answers at
// once. Each string of the environment is "NAME=value".
TracedRun trace_filter(std::vector<std::string> environment);
