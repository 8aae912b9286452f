// The PPD file of a queue, fetched from the scheduler and given back to it.
#pragma once

#include <optional>
#include <string>

#include "admin/scheduler.h"

struct PpdAnswer {
  std::optional<std::string> ppd;
  bool is_missing;  // the queue has no PPD file
  std::string error;
};

PpdAnswer get_ppd(Scheduler const& scheduler, std::string const& queue);

// Gives the queue this PPD file and leaves all else about it alone. Returns why it was not
// done; empty if it was.
std::string put_ppd(Scheduler const& scheduler, std::string const& queue, std::string const& ppd);
