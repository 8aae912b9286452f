// How a byte becomes an outcome.
#include "tests/harness/scripted_calls.h"

#include <algorithm>
#include <cstdio>

namespace {

using Kind = Call::Kind;

constexpr unsigned MOSTLY_TAKEN = 0xf8;  // what is below

}  // namespace

unsigned ScriptedCalls::next() { return at_ < script_.size() ? script_[at_++] : 0xff; }

Outcome ScriptedCalls::meet(Call const& call)
{
  auto const size = static_cast<long>(call.text.size());
  switch (call.kind) {
    case Kind::Message:
      // A standard error that is closed or full must change nothing: it fails now and then.
      return {at_ % 3 == 2 ? -1 : size};
    case Kind::Write: {
      unsigned const decision = next();
      return {decision < MOSTLY_TAKEN ? size : static_cast<long>(decision) % size};
    }
    case Kind::Flush:
      return {next() < MOSTLY_TAKEN ? 0 : EOF};
    case Kind::Request:
      return request(call);
    case Kind::Read:
      return read(call);
    case Kind::Sleep:  // a signal may cut a pause short
      return {static_cast<long>(next()) % (call.number + 1)};
    default:
      return {next() % 2 == 0 ? 0 : -1};
  }
}

// The status is any signed byte, as a backend may send it; below 0x80 mostly OK. The data
// fills as much of the room as the script says, and the length is not to be trusted.
Outcome ScriptedCalls::request(Call const& call)
{
  unsigned const decision = next();
  int const status = decision < 0x70 ? 1 : static_cast<signed char>(decision - 0x70);
  auto const fill = static_cast<char>(next());
  text_.assign(static_cast<std::size_t>(call.room) * next() / 255, fill);
  return {status, text_, static_cast<int>(next() << 24) | static_cast<int>(call.room)};
}

// 0xff and 0xfe: an error and silence. Else a piece of that length, up to all of the room,
// filled with the next byte.
Outcome ScriptedCalls::read(Call const& call)
{
  unsigned const decision = next();
  if (decision >= 0xfe) return {decision == 0xff ? -1 : 0};
  text_.assign(std::min(2UL * decision + 1, static_cast<unsigned long>(call.room)),
               static_cast<char>(next()));
  return {static_cast<long>(text_.size()), text_};
}
