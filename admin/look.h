// What the queues of one scheduler come to.
#pragma once

#include <string>
#include <vector>

#include "admin/queue_status.h"
#include "admin/scheduler.h"

struct LookError {
  std::string text;
  std::string missing;  // the name of a queue that is not there; empty: something else is wrong
};

struct Statuses {
  std::vector<QueueStatus> statuses;  // the worst first
  std::vector<LookError> errors;      // of queues that could not be looked at
  std::vector<std::string> away;      // servers that could not be asked; each has an error, too
};

// Looks at these queues, or without a name at all that are attached; a class stands for its
// members. A level below `low`, in percent, is low.
Statuses look(Scheduler const& scheduler, std::vector<std::string> const& queues, int low);
