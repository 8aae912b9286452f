// What an upload of a PPD file does to a queue's state, and what is put back.
#pragma once

#include <string>
#include <vector>

#include "admin/queue.h"
#include "admin/scheduler.h"

// The scheduler forgets every reason of the queue with its old PPD file. Pauses the queue
// again, with its message, if it was paused, and has it hold new jobs if it did. Returns what
// could not be put back; empty if all was.
std::string restore_state(Scheduler const& scheduler, Queue const& before, Queue const& now);

// The filters that the scheduler finds fault with now and did not before; empty without one.
std::string new_filter_problem(Queue const& before, Queue const& now);

// The reasons that are gone and that only the printer can bring back.
std::vector<std::string> lost_reasons(Queue const& before, Queue const& now);
