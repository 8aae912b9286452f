// The lines of a log that tell of a failure, with cause and cure.
#pragma once

#include <span>
#include <string_view>

struct LogFailure {
  std::string_view message;  // "..." in it stands for anything
  std::string_view cause;
  std::string_view cure;
};

// The filter's messages first, then those of scheduler and backend. The first that fits counts.
std::span<LogFailure const> log_failures();

// The failure of which a job's line tells; null if of none.
LogFailure const* find_log_failure(std::string_view text);
