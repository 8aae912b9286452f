// Many queues are asked in turns, so that what their asks bring about can be heard.
#pragma once

#include <cstddef>
#include <vector>

#include "admin/event_stream.h"
#include "admin/watched_queue.h"

struct AskTurns {
  Time poll;          // the last one
  std::size_t asks;   // that may be sent until the next
  std::size_t first;  // the queue that is tended first
};

// Listens to the scheduler and does what is due. Returns when there is more to do; a time that is
// past: at once.
Time tend_in_turns(EventStream& stream, std::vector<WatchedQueue>& queues, AskTurns& turns,
                   Time now);
