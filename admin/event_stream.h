// The way by which queues hear of the scheduler's events, whatever happens to the scheduler.
#pragma once

#include <string>
#include <vector>

#include "admin/notifications.h"
#include "admin/watched_queue.h"

struct EventStream {
  std::string server;
  Duration pause;  // between two polls
  Scheduler scheduler;
  Subscription subscription;
  Subscription lost;  // was given up, and is to be cancelled
  bool has_begun;     // from now on what goes unseen may be a print
  Time next_try;      // to subscribe
  Time next_poll;
  Time next_renewal;
  Time last_poll;
  std::string trouble;  // as was told last
};

EventStream open_stream(std::string const& server, Duration pause, Time now);

// Subscribes if need be, lets the queues hear what is new, and returns when there is more to do.
// Without a connection `scheduler.http` is null.
Time keep_listening(EventStream& stream, std::vector<WatchedQueue>& queues, Time now);

// Takes leave of the scheduler.
void close_stream(EventStream& stream);
