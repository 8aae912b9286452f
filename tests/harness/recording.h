// What a run of the filter says and asks, taken down and held against a telling of it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/harness/outside_calls.h"

// Takes down the calls and messages of one run, and is then walked through in the same order.
// Any deviation ends the process: there is no other way out of a fuzz target.
class Recording {
public:
  // --- While the run goes on ---

  // Every message has to be whole lines, short enough for the scheduler's pipe to keep whole.
  void note(Call const& call, Outcome const& outcome);

  // --- Once it is over ---

  // The filter said this next.
  void expect_message(std::string_view text);
  // The next call it made was this one, and nothing else was said before it.
  Outcome expect_call(Call const& call);
  void expect_end();

private:
  struct Event {
    std::string messages{};  // before the call
    Call call{};
    Outcome outcome{};
    std::string written{};  // what the texts of both refer to
    std::string read{};
  };

  std::vector<Event> events_{1};  // the last one is still to come
  std::size_t at_ = 0;
  std::string expected_{};  // of the messages before the next call
};
