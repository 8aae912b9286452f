// What a run of the filter says and asks, as a list that can be held against the rules.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// One thing that happened. What a member means depends on the call: bytes written or read or
// the directive, the number asked for (command, room, duration) or the line, the timeout,
// the result (of a directive the room that it had).
struct Event {
  enum class Kind { Messages, Write, Flush, Request, Read, Sleep, Pause, Directive };

  Kind kind;
  std::string text{};
  long argument = 0;
  double timeout = 0;
  long result = 0;
};

// Takes down the events of one run. Calls of other threads and from between the runs are
// the fuzzer's own business and not taken down.
class Conversation {
public:
  Conversation();
  ~Conversation();
  Conversation(Conversation const&) = delete;
  Conversation& operator=(Conversation const&) = delete;

  // The one that the current thread is in, or null.
  static Conversation* current();

  void note(Event event);
  // Every write has to be whole lines, short enough for the scheduler's pipe to keep whole.
  void note_message(std::string_view text);

  // --- Walking through, once the run is over; any deviation ends the fuzzer ---

  // The next thing that happened is this message.
  void expect_message(std::string_view text);
  // The next thing that happened is this call.
  Event const& expect(Event::Kind kind);
  [[nodiscard]] bool next_is(Event::Kind kind) const;
  void expect_end() const;

private:
  std::vector<Event> events{};
  std::size_t at = 0;
  std::size_t at_character = 0;  // in a text of messages
};
