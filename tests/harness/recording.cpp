// Taking a run down, and walking through it.
#include "tests/harness/recording.h"

#include <climits>

#include "tests/harness/hex.h"
#include "tests/harness/require.h"

namespace {

std::string call_text(Call const& call)
{
  static constexpr char const* NAMES[] = {"message", "write", "flush",     "request",       "read",
                                          "pause",   "sleep", "directive", "standard input"};
  return std::string(NAMES[static_cast<std::size_t>(call.kind)]) + " [" + hex(call.text)
         + "] number " + std::to_string(call.number) + " room " + std::to_string(call.room)
         + " timeout " + std::to_string(call.timeout);
}

}  // namespace

void Recording::note(Call const& call, Outcome const& outcome)
{
  Event& event = events_.back();
  if (call.kind == Call::Kind::Message) {
    require(call.text.ends_with('\n') && call.text.size() <= PIPE_BUF, "a write is whole lines");
    event.messages += call.text;
    return;
  }
  event.call = call;
  event.outcome = outcome;
  event.written = call.text;
  event.read = outcome.text;
  events_.emplace_back();
}

void Recording::expect_message(std::string_view text) { expected_ += text; }

Outcome Recording::expect_call(Call const& call)
{
  Event& event = events_[at_++];
  require_equal(event.messages, expected_);
  expected_.clear();
  require(at_ < events_.size(), "another call comes next");
  event.call.text = event.written;
  if (!(event.call == call)) require_equal(call_text(event.call), call_text(call));
  event.outcome.text = event.read;
  return event.outcome;
}

void Recording::expect_end()
{
  require_equal(events_[at_].messages, expected_);
  require(at_ + 1 == events_.size(), "nothing else happens");
}
