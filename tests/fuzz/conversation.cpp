// Taking events down and walking through them.
#include "tests/fuzz/conversation.h"

#include <climits>
#include <utility>

#include "tests/fuzz/require.h"

namespace {

thread_local Conversation* conversation = nullptr;

}  // namespace

Conversation::Conversation() { conversation = this; }

Conversation::~Conversation() { conversation = nullptr; }

Conversation* Conversation::current() { return conversation; }

void Conversation::note(Event event) { events.push_back(std::move(event)); }

void Conversation::note_message(std::string_view text)
{
  require(text.ends_with('\n') && text.size() <= PIPE_BUF, "a write is whole lines");
  if (events.empty() || events.back().kind != Event::Kind::Messages)
    events.push_back({.kind = Event::Kind::Messages});
  events.back().text += text;
}

void Conversation::expect_message(std::string_view text)
{
  require(next_is(Event::Kind::Messages), "a message comes next");
  std::string const& messages = events[at].text;
  require_equal(std::string_view(messages).substr(at_character, text.size()), text);
  at_character += text.size();
  if (at_character < messages.size()) return;
  ++at;
  at_character = 0;
}

Event const& Conversation::expect(Event::Kind kind)
{
  require(next_is(kind) && at_character == 0, "this call comes next");
  return events[at++];
}

bool Conversation::next_is(Event::Kind kind) const
{
  return at < events.size() && events[at].kind == kind;
}

void Conversation::expect_end() const { require(at == events.size(), "nothing else happens"); }
