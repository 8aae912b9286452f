// velmoctl explain.
#pragma once

#include <optional>
#include <string>

struct ExplainOptions {
  std::optional<int> job;
  // Where the scheduler writes its log unless ErrorLog in cups-files.conf names another file.
  std::string file = "/var/log/cups/error_log";
};

// Returns the exit status.
int run_explain(ExplainOptions const& options);
