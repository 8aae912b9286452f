// What the played world answers to each call, and how it takes the call down.
#include "tests/harness/fake_world.h"

#include <cstdio>
#include <utility>

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

FakeWorld::FakeWorld(FakeScript answers) : script(std::move(answers)) { world = this; }

FakeWorld::~FakeWorld() { world = nullptr; }

FakeWorld* FakeWorld::current() { return world; }

void FakeWorld::note(std::string const& call)
{
  events_ += messages_.take();
  events_ += "> " + call + "\n";
}

std::string FakeWorld::transcript()
{
  std::string all = events_ + messages_.take();
  events_.clear();
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
      return Outcome{static_cast<long>(next(script.writes, count))};
    }
    case Kind::Flush:
      note("fflush(stdout)");
      return Outcome{next(script.flushes, 0)};
    case Kind::Request:
      note("cupsSideChannelDoRequest(" + std::to_string(call.number) + ", room for "
           + std::to_string(call.room) + ", " + seconds(call.timeout) + ")");
      return Outcome{next<int>(script.drains, CUPS_SC_STATUS_OK), script.drain_data};
    case Kind::Read:
      note("cupsBackChannelRead(room for " + std::to_string(call.room) + ", "
           + seconds(call.timeout) + ")");
      return read(static_cast<std::size_t>(call.room));
    case Kind::Sleep:
      note("sleep(" + std::to_string(call.number) + ")");
      return Outcome{static_cast<long>(script.unslept)};
    case Kind::Pause:
      note("usleep(" + std::to_string(call.number) + ")");
      return Outcome{};
    default:
      return std::nullopt;
  }
}

Outcome FakeWorld::read(std::size_t room)
{
  piece_ = next(script.reads, FakeScript::Read{});
  if (piece_.bytes.size() > room) {
    script.reads.push_front({piece_.bytes.substr(room)});
    piece_.bytes.resize(room);
  }
  if (piece_.bytes.empty()) return {piece_.result};
  return {static_cast<long>(piece_.bytes.size()), piece_.bytes};
}
