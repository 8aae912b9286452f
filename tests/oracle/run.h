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

// From the probe to the end; gives the exit status.
int tell_run(Surroundings const& outside);

// The uses of the exchange. Each gives what it has to deliver: whether the printer was woken, the
// reply's bytes, the bytes of the last reply of an awake printer.
bool tell_wake_up(Surroundings const& outside);
std::optional<std::string> tell_printer_status(Surroundings const& outside);
std::optional<std::string> tell_job_status(Surroundings const& outside);
std::optional<std::string> tell_retried_printer_status(Surroundings const& outside);
