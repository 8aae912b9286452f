// Plays one job or hundreds of them at once, in one loop.
#pragma once

#include <cstdint>
#include <vector>

#include "bench/player/played_job.h"

enum class Starts : std::uint8_t {
  InTurn,  // each when the one before it pauses after its wake-up, so that they do not compete
  AtOnce,
};

// Runs every job to its end and returns what they did, in the order given. Throws
// std::runtime_error when a program cannot be started or fails.
std::vector<Outcome> play(std::vector<Job> const& jobs, Starts starts = Starts::InTurn);

// Runs one job.
Outcome play(Job const& job);
