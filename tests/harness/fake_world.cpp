// The calls as the fake world answers them.
#include "tests/harness/fake_world.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "tests/harness/hex.h"
#include "tests/harness/replaced_calls.h"

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

std::size_t play_fwrite(void const* data, std::size_t size, std::size_t count, FILE* stream)
{
  if (stream != stdout) return REAL_CALLS.fwrite(data, size, count, stream);
  world->note("fwrite(" + std::to_string(size) + " x " + std::to_string(count) + ": "
              + hex({static_cast<char const*>(data), size * count}) + ")");
  return next(world->fwrite_results, count);
}

int play_fflush(FILE* stream)
{
  if (stream != stdout) return REAL_CALLS.fflush(stream);
  world->note("fflush(stdout)");
  return next(world->fflush_results, 0);
}

int play_side_channel_request(cups_sc_command_t command, char* data, int* length, double timeout)
{
  world->note("cupsSideChannelDoRequest(" + std::to_string(command) + ", room for "
              + std::to_string(*length) + ", " + seconds(timeout) + ")");
  auto const brought = std::min(static_cast<std::size_t>(*length), world->drain_data.size());
  memcpy(data, world->drain_data.data(), brought);
  *length = static_cast<int>(brought);
  return next<int>(world->drain_statuses, CUPS_SC_STATUS_OK);
}

ssize_t play_back_channel_read(char* buffer, std::size_t room, double timeout)
{
  world->note("cupsBackChannelRead(room for " + std::to_string(room) + ", " + seconds(timeout)
              + ")");
  FakeWorld::Read piece = next(world->reads, FakeWorld::Read{});
  if (piece.bytes.empty()) return piece.result;
  auto const brought = std::min(room, piece.bytes.size());
  memcpy(buffer, piece.bytes.data(), brought);
  if (brought < piece.bytes.size()) world->reads.push_front({piece.bytes.substr(brought)});
  return static_cast<ssize_t>(brought);
}

unsigned play_sleep(unsigned duration)
{
  world->note("sleep(" + std::to_string(duration) + ")");
  return world->unslept;
}

int play_usleep(useconds_t duration)
{
  world->note("usleep(" + std::to_string(duration) + ")");
  return 0;
}

}  // namespace

FakeWorld::FakeWorld()
{
  world = this;
  replaced_calls.fwrite = play_fwrite;
  replaced_calls.fflush = play_fflush;
  replaced_calls.sleep = play_sleep;
  replaced_calls.usleep = play_usleep;
  replaced_calls.side_channel_request = play_side_channel_request;
  replaced_calls.back_channel_read = play_back_channel_read;
}

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
