// What the played world answers to each call, and how it takes the call down.
#include "tests/harness/fake_world.h"

#include <cstdio>

#include "tests/harness/hex.h"

namespace {

FakeWorld* world = nullptr;

template <typename T>
T next(std::deque<T>& results, T otherwise)
{
  if (results.empty()) return otherwise;
  T result = results.front();
  results.pop_front();
  return result;
}

std::string seconds(double value)
{
  char text[32];
  snprintf(text, sizeof text, "%.3f s", value);
  return text;
}

}  // namespace

FakeWorld::FakeWorld() { world = this; }

FakeWorld::~FakeWorld() { world = nullptr; }

FakeWorld* FakeWorld::current() { return world; }

void FakeWorld::note(std::string const& call)
{
  events += messages.take();
  events += "> " + call + "\n";
}

std::string FakeWorld::transcript()
{
  std::string all = events + messages.take();
  events.clear();
  return all;
}

std::optional<Outcome> FakeWorld::meet(Call const& call)
{
  using Kind = Call::Kind;
  switch (call.kind) {
    case Kind::Write: {
      auto const count = call.text.size() / static_cast<std::size_t>(call.number);
      note("fwrite(" + std::to_string(call.number) + " x " + std::to_string(count) + ": "
           + hex(call.text) + ")");
      return Outcome{static_cast<long>(next(fwrite_results, count))};
    }
    case Kind::Flush:
      note("fflush(stdout)");
      return Outcome{next(fflush_results, 0)};
    case Kind::Request:
      note("cupsSideChannelDoRequest(" + std::to_string(call.number) + ", room for "
           + std::to_string(call.room) + ", " + seconds(call.timeout) + ")");
      return Outcome{next<int>(drain_statuses, CUPS_SC_STATUS_OK), drain_data};
    case Kind::Read:
      note("cupsBackChannelRead(room for " + std::to_string(call.room) + ", "
           + seconds(call.timeout) + ")");
      return read(static_cast<std::size_t>(call.room));
    case Kind::Sleep:
      note("sleep(" + std::to_string(call.number) + ")");
      return Outcome{unslept};
    case Kind::Pause:
      note("usleep(" + std::to_string(call.number) + ")");
      return Outcome{};
    default:
      return std::nullopt;
  }
}

Outcome FakeWorld::read(std::size_t room)
{
  piece = next(reads, Read{});
  if (piece.bytes.size() > room) {
    reads.push_front({piece.bytes.substr(room)});
    piece.bytes.resize(room);
  }
  return {piece.result, piece.bytes};
}
