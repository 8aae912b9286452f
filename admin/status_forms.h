// The forms in which a queue's status is put out: for people, for programs, for monitors.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "admin/queue_status.h"

// Several lines; with the escape sequences of a terminal's colours if wanted.
std::string status_text(QueueStatus const& status, bool in_colour);

// An array, one object a queue, and one for each of several servers that could not be asked; null
// is what is not known.
std::string status_json(std::vector<QueueStatus> const& statuses,
                        std::vector<std::string> const& away = {});

// The same without a scheduler, for the queues that were named; without a name one object stands
// for all.
std::string unreachable_json(std::vector<std::string> const& names);

struct CheckLimits {
  int warning = 10;            // levels below are low
  int critical = 3;            // levels below are critical
  std::optional<int> max_age;  // older levels are a warning, in seconds
};

struct CheckLine {
  Severity severity;
  std::string text;
};

// A text fit for such a line: a bar would begin the figures.
std::string without_bars(std::string_view text);

// One line as the guidelines for monitoring plugins want it.
CheckLine status_check(QueueStatus const& status, CheckLimits const& limits);

// The exit status that the guidelines have for it.
int check_exit_status(Severity severity);
