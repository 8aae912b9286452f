// The outside calls of a process, counted, and one of them failing.
#pragma once

#include <optional>

#include "tests/harness/fault.h"
#include "tests/harness/outside_calls.h"
#include "tests/harness/own_channels.h"

// From now on steps are counted and meet the fault: allocations, and the system calls that
// libcups makes on the command file and the channels.
void watch_steps(Fault const& fault, StepCounts* counts);

// From now on they do what they always do, until watching goes on with the counts so far.
StepCounts* stop_watching();
void go_on_watching(StepCounts* counts);

// Counts the step; true when it is to fail, with errno set.
bool step_fails(Step step);

// The same for the calls of our own code and for the waits of libcups; what they give then.
std::optional<Outcome> outcome_of_fault(Call const& call);
std::optional<int> outcome_of_fault(Wait wait);
