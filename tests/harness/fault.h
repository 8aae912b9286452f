// One failure: which outside call it meets, from which time on, and what the call then gives.
#pragma once

#include <array>
#include <cstddef>

// Every way in which the filter reaches outside itself, down to the system calls that libcups
// makes for it.
enum class Step {
  DeviceWrite,    // fwrite of a command
  DeviceFlush,    // fflush after it
  Message,        // writev to standard error
  RequestWait,    // poll until the side channel takes a request
  RequestWrite,   // write of the request
  AnswerWait,     // poll until its answer is there
  AnswerRead,     // read of the answer
  ReplyWait,      // select until the back channel has something
  ReplyRead,      // read of it
  StandardInput,  // cupsFileStdin, when no command file is named
  FileOpen,       // open of the command file
  FileRead,       // read of it
  FileClose,      // close of it
  Sleep,          // between two attempts
  Pause,          // usleep after the wake-up
  Allocation,     // operator new
};
inline constexpr std::size_t STEPS = 16;

struct Fault {
  Step step = Step::DeviceWrite;
  long result = -1;
  int error = 0;
  int index = -1;         // the call that fails, counted from 0; negative for none
  bool for_ever = false;  // so do all after it

  [[nodiscard]] bool hits(Step candidate, int candidate_index) const
  {
    if (candidate != step || index < 0) return false;
    return for_ever ? candidate_index >= index : candidate_index == index;
  }
};

using StepCounts = std::array<int, STEPS>;

inline int& count_of(StepCounts& counts, Step step)
{
  return counts[static_cast<std::size_t>(step)];
}

inline int count_of(StepCounts const& counts, Step step)
{
  return counts[static_cast<std::size_t>(step)];
}
