// The outside calls of a process, counted, and one of them failing.
#pragma once

#include <string>

#include "tests/faults/fault.h"

// From now on calls are counted and meet the fault. `attempts` is the descriptor of a file
// that gets every message before it is written, each ended by a zero byte.
void watch_calls(Fault const& fault, CallCounts* counts, int attempts);

// From now on they do what they always do.
void stop_watching();

// Counts the call; true when it is to fail, with errno set. For the replaced operator new.
bool call_fails(Call call);
