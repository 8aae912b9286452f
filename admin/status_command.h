// velmoctl status and velmoctl ask.
#pragma once

#include <string>
#include <vector>

#include "admin/status_forms.h"

struct StatusOptions {
  bool json = false;
  bool check = false;
  bool watch = false;
  CheckLimits limits;
  std::vector<std::string> queues;  // none: all that are attached
};

struct AskOptions {
  int timeout = 30;  // seconds
  std::vector<std::string> queues;
};

// The exit status of a check that finds no scheduler.
inline constexpr int CHECK_UNKNOWN = 3;

// All return the exit status.
int run_status(Scheduler const& scheduler, StatusOptions const& options);
int run_status(std::vector<std::string> const& servers, StatusOptions const& options);
int run_ask(Scheduler const& scheduler, AskOptions const& options);

// Asks printers and shows what came of it, in this order. Returns of each whether its values are
// in.
std::vector<bool> ask_and_show(Scheduler const& scheduler, std::vector<std::string> const& queues,
                               int timeout);
