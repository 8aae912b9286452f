// Command jobs that have the printers of queues asked, and the wait for their values.
#pragma once

#include <string>
#include <vector>

#include "admin/scheduler.h"

struct AskResult {
  bool are_values_in;
  std::string text;  // why they are not, and what to do
};

// Asks for level and errors, of many printers at the same time, and returns when the scheduler has
// them, or after `timeout` seconds from each job on. Complete as soon as the filter has written
// them: a backend may keep the job for longer. The results stand in the order of the names.
std::vector<AskResult> ask_printers(Scheduler const& scheduler,
                                    std::vector<std::string> const& names, int timeout);
