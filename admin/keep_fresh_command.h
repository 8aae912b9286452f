// velmoctl keep-fresh: stays running and has printers asked after each print.
#pragma once

#include <optional>
#include <string>
#include <vector>

struct KeepFreshOptions {
  double idle_minutes = 30;  // 0: never
  std::optional<double> settle_seconds;
  double delay_seconds = 0;
  std::vector<std::string> queues;
};

// Runs until a signal ends it; waits for a scheduler that is not there. An empty `server` is
// what CUPS_SERVER and client.conf say.
int run_keep_fresh(std::string const& server, KeepFreshOptions const& options);
