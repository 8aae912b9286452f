// One queue that is kept fresh: what the scheduler tells of it, and its asks.
#pragma once

#include <optional>
#include <string>

#include "admin/freshness.h"
#include "admin/scheduler.h"

struct WatchedQueue {
  std::string name;
  std::optional<Duration> settle;  // as it was wished for; nothing: what suits the device
  FreshRules rules;
  Freshness state;
  std::string trouble;  // why its printer cannot be asked, as was told last
  int job;              // of our last ask
  bool is_printing;     // as the events told
  int begun;            // when the last job began, by the scheduler's clock; 0: unseen
  bool has_changed;     // it has to be looked at
  Time looked_at;
};

WatchedQueue watch(std::string const& name, std::optional<Duration> settle, FreshRules const& rules,
                   Time now);

// Looks at the queue if it has to be looked at, and asks its printer if an ask is due and may be
// sent. Tells whether it was.
bool tend(Scheduler const& scheduler, WatchedQueue& queue, bool may_ask, Time now);

// When it has to be tended next, unless an event comes before; nothing: never.
std::optional<Time> tend_time(WatchedQueue const& queue);
