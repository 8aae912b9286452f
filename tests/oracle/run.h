// The filter's conversation with backend and printer, told a second time: which call it makes
// next, with which arguments, and what it says in between.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "tests/harness/outside_calls.h"

// Where a conversation takes place. Each call is met as it comes up, so that what follows hangs
// on its outcome; `hear` gets all that is said, in pieces of whole lines.
struct Surroundings {
  std::function<Outcome(Call const&)> meet;
  std::function<void(std::string_view)> hear;
};

// What makes one use of the exchange different from another.
struct Use {
  std::string name;
  std::string_view command;
  std::size_t minimum;  // of the reply; 0 for none
  long pause;           // microseconds; 0 for none
};

// Gives the reply's bytes; none when it failed.
std::optional<std::string> tell_exchange(Surroundings const& outside, Use const& use);

// From the probe to the end; gives the exit status.
int tell_run(Surroundings const& outside);

// The filter's own uses. Each gives what it has to deliver: whether the printer was woken, the
// reply's bytes, the bytes of the last reply of an awake printer.
bool tell_wake_up(Surroundings const& outside);
std::optional<std::string> tell_printer_status(Surroundings const& outside);
std::optional<std::string> tell_job_status(Surroundings const& outside);
std::optional<std::string> tell_retried_printer_status(Surroundings const& outside);
