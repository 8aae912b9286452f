// One whole run of the filter between a scheduler and a printer that are played.
#pragma once

#include <string>
#include <vector>

#include "tests/harness/filter_process.h"
#include "tests/harness/scripted_printer.h"

struct Transcript {
  std::string messages{};             // every byte of standard error
  std::vector<std::string> writes{};  // the same, cut as it was written

  // One line for each thing that the surroundings notice, in order: "device <bytes>",
  // "request <bytes>", "wait <seconds> s on <descriptor>", "sleep <seconds>",
  // "usleep <microseconds>", and last "exit <status>" or "signal <number>".
  std::string events{};
};

// The filter and its surroundings move in turns: the surroundings act only while the filter
// waits or pauses, and time passes only then. The transcript is the same on every machine.
Transcript run_filter(Job const& job, PrinterScript const& script = {});

// The same for a job whose commands come on standard input, and for one with a command file.
Transcript run_commands(std::string const& commands, PrinterScript const& script = {});
Transcript run_file(std::string const& path, PrinterScript const& script = {});
