// The world outside the filter, played by a test: device stream, side channel, back
// channel and clock.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <deque>
#include <string>

#include "tests/harness/outside_calls.h"
#include "tests/harness/stderr_capture.h"

// While a FakeWorld lives, the calls of OutsideCalls come here, all but messages, which go to
// standard error as always and are captured there.
class FakeWorld {
public:
  // One result of cupsBackChannelRead: these bytes, or, without any, this number. What
  // the reader has no room for stays for its next read.
  struct Read {
    std::string bytes;
    ssize_t result = 0;
  };

  FakeWorld();
  ~FakeWorld();
  FakeWorld(FakeWorld const&) = delete;
  FakeWorld& operator=(FakeWorld const&) = delete;

  // Results in the order of the calls. Once a list is used up the call succeeds; a read
  // then finds silence and returns 0.
  std::deque<std::size_t> fwrite_results;
  std::deque<int> fflush_results;
  std::deque<int> drain_statuses;
  std::deque<Read> reads;
  // What every answer of the side channel carries besides its status.
  std::string drain_data;
  // Seconds that sleep says are left, as after a signal.
  unsigned unslept = 0;

  // Everything since the last call, in order: messages as they were written, and each
  // call with its arguments as "> call(arguments)\n".
  std::string transcript();

  void note(std::string const& call);
  static FakeWorld* current();

private:
  std::optional<Outcome> meet(Call const& call);
  Outcome read(std::size_t room);

  StderrCapture messages;
  std::string events;
  Read piece;
  OutsideCalls calls{[this](Call const& call) { return meet(call); }};
};
