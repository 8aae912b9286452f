// What several servers say, in one table.
#pragma once

#include <string>
#include <vector>

#include "admin/look.h"

struct ServerStatuses {
  std::string server;
  Statuses found;
  std::string trouble;  // why the server could not be asked; empty: it has answered
};

// All queues, the worst first, each with its server; a queue that was named is an error only if no
// server that has answered has it.
Statuses one_table(std::vector<ServerStatuses> servers);
