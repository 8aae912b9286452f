// What the scheduler's events mean for the queues that are kept fresh.
#pragma once

#include <string>
#include <vector>

#include "admin/notifications.h"
#include "admin/watched_queue.h"

// The queue of this name, which the scheduler takes in any case; null if there is none.
WatchedQueue* find_queue(std::vector<WatchedQueue>& queues, std::string const& name);

// Takes in an event of the queue that came about at `when`.
void hear(Scheduler const& scheduler, WatchedQueue& queue, Event const& event, Time when);

// Events of the queue went unseen.
void lose_track(WatchedQueue& queue);
