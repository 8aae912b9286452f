// The world outside the filter, played by a test: device stream, side channel, back
// channel and clock.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <deque>
#include <string>

#include "tests/harness/outside_calls.h"
#include "tests/harness/stderr_capture.h"

// What the world answers, in the order of the calls. Once a list is used up the call succeeds; a
// read then finds silence and returns 0.
struct FakeScript {
  // One result of cupsBackChannelRead: these bytes, or, without any, this number. What
  // the reader has no room for stays for its next read.
  struct Read {
    std::string bytes{};
    ssize_t result = 0;
  };

  std::deque<std::size_t> writes{};
  std::deque<int> flushes{};
  std::deque<int> drains{};
  std::deque<Read> reads{};
  std::string drain_data{};  // of every answer of the side channel
  unsigned unslept = 0;      // seconds that sleep says are left, as after a signal
};

// While a FakeWorld lives, the calls of OutsideCalls come here, all but messages, which go to
// standard error as always and are captured there.
class FakeWorld {
public:
  explicit FakeWorld(FakeScript answers = {});
  ~FakeWorld();
  FakeWorld(FakeWorld const&) = delete;
  FakeWorld& operator=(FakeWorld const&) = delete;

  FakeScript script;

  // Everything since the last call, in order: messages as they were written, and each
  // call with its arguments as "> call(arguments)\n".
  std::string transcript();

  // Notes the call and answers it; takes a text down as if it had been written.
  std::optional<Outcome> meet(Call const& call);
  void hear(std::string_view text) { events_ += text; }

  void note(std::string const& call);
  static FakeWorld* current();

private:
  Outcome read(std::size_t room);

  StderrCapture messages_;
  std::string events_;
  FakeScript::Read piece_;
  OutsideCalls calls_{[this](Call const& call) { return meet(call); }};
};
