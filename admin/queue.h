// What the scheduler says about a queue.
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "admin/command_filter.h"
#include "admin/scheduler.h"

struct Queue {
  std::string name;
  bool is_class;
  std::vector<std::string> members;  // of a class
  ipp_pstate_t state;
  std::string state_message;
  std::vector<std::string> reasons;  // without "none"
  bool accepting;
  int jobs;  // waiting or printing
  std::string device;
  std::string model;
  std::vector<std::string> commands;  // without "none"

  std::optional<int> level;  // as the filter reported it; nothing: never
  std::string ribbon;        // marker-names
  std::string message;       // marker-message
  int level_time;            // both by the scheduler's clock, in seconds; 0: never
  int up_time;

  // The scheduler offers exactly our commands.
  [[nodiscard]] bool isAttached() const { return std::ranges::equal(commands, OUR_COMMANDS); }
};

struct QueueAnswer {
  std::optional<Queue> queue;
  std::string error;
  bool is_missing = false;  // there is no queue of that name
};

struct QueuesAnswer {
  std::vector<Queue> queues;
  std::string error;
};

QueueAnswer get_queue(Scheduler const& scheduler, std::string const& name);

// All queues that are no classes, as the scheduler sorts them.
QueuesAnswer get_queues(Scheduler const& scheduler);
