// How the scheduler starts a filter: its arguments, its environment, its descriptors 0 to 4.
#pragma once

#include <sys/types.h>

#include <array>

#include "bench/player/played_job.h"

// Starts the job's program with these descriptors and no others. Throws std::runtime_error
// when that cannot be done.
pid_t start_program(Job const& job, std::array<int, 5> const& descriptors);
