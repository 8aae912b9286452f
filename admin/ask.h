// One command job that has a queue's printer asked, and the wait for its values.
#pragma once

#include <string>

#include "admin/scheduler.h"

struct AskResult {
  bool are_values_in;
  std::string text;  // why they are not, and what to do
};

// Asks for level and errors and returns when the scheduler has them, or after `timeout`
// seconds. Complete as soon as the filter has written them: a backend may keep the job for
// longer.
AskResult ask_printer(Scheduler const& scheduler, std::string const& name, int timeout);
