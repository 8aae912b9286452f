// The scheduler's events, fetched through a pull subscription.
#pragma once

#include <string>
#include <vector>

#include "admin/freshness.h"
#include "admin/scheduler.h"

struct Event {
  int number;  // counts the events of the subscription
  std::string queue;
  bool is_job_end;
  int job;
  ipp_jstate_t job_state;
  ipp_pstate_t queue_state;
  int time;  // by the scheduler's clock, in seconds
};

// One for the scheduler's queues together: a queue's own would be gone with the queue, and is
// told of every other queue's pauses all the same.
struct Subscription {
  int id;    // 0: there is none
  int last;  // the number of its last event; 0: none has come
};

struct SubscribeResult {
  Subscription subscription;
  std::string error;
};
SubscribeResult subscribe(Scheduler const& scheduler);

// Has it live for another hour; without being renewed it would not outlive us for longer.
void renew(Scheduler const& scheduler, Subscription const& subscription);
void unsubscribe(Scheduler const& scheduler, Subscription const& subscription);

struct News {
  std::string error;          // why there is none: no answer, or the subscription is gone
  bool is_gap;                // events went unseen
  std::vector<Event> events;  // new ones
  int now;                    // by the scheduler's clock
};

// What has happened since the last event.
News fetch_news(Scheduler const& scheduler, Subscription const& subscription);

// Of the events from number `last` on, those that are new. The last one is fetched once more:
// where it is missing, the scheduler has dropped it with what followed, or has been restarted.
News new_events(std::vector<Event> fetched, int last);
