// The replaced calls themselves; the linker sends them here with --wrap.
#include "tests/harness/fake_world.h"

#include <cups/backend.h>
#include <cups/sidechannel.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "tests/harness/foreign_enum.h"

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

std::string hex(std::string_view bytes)
{
  static constexpr char DIGITS[] = "0123456789abcdef";
  std::string text;
  for (char c : bytes) {
    auto const byte = static_cast<unsigned char>(c);
    if (!text.empty()) text += ' ';
    text += DIGITS[byte / 16];
    text += DIGITS[byte % 16];
  }
  return text;
}

// The names that --wrap asks for are reserved ones; there is no other way to spell them.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
extern "C" {

std::size_t __real_fwrite(void const* data, std::size_t size, std::size_t count, FILE* stream);
int __real_fflush(FILE* stream);
cups_sc_status_t __real_cupsSideChannelDoRequest(cups_sc_command_t command, char* data, int* length,
                                                 double timeout);
ssize_t __real_cupsBackChannelRead(char* buffer, std::size_t room, double timeout);
unsigned __real_sleep(unsigned duration);
int __real_usleep(useconds_t duration);

std::size_t __wrap_fwrite(void const* data, std::size_t size, std::size_t count, FILE* stream)
{
  if (!world || stream != stdout) return __real_fwrite(data, size, count, stream);
  world->note("fwrite(" + std::to_string(size) + " x " + std::to_string(count) + ": "
              + hex({static_cast<char const*>(data), size * count}) + ")");
  return next(world->fwrite_results, count);
}

int __wrap_fflush(FILE* stream)
{
  if (!world || stream != stdout) return __real_fflush(stream);
  world->note("fflush(stdout)");
  return next(world->fflush_results, 0);
}

cups_sc_status_t __wrap_cupsSideChannelDoRequest(cups_sc_command_t command, char* data, int* length,
                                                 double timeout)
{
  if (!world) return __real_cupsSideChannelDoRequest(command, data, length, timeout);
  world->note("cupsSideChannelDoRequest(" + std::to_string(command) + ", room for "
              + std::to_string(*length) + ", " + seconds(timeout) + ")");
  auto const brought = std::min(static_cast<std::size_t>(*length), world->drain_data.size());
  memcpy(data, world->drain_data.data(), brought);
  *length = static_cast<int>(brought);
  return foreign_enum<cups_sc_status_t>(next<int>(world->drain_statuses, CUPS_SC_STATUS_OK));
}

ssize_t __wrap_cupsBackChannelRead(char* buffer, std::size_t room, double timeout)
{
  if (!world) return __real_cupsBackChannelRead(buffer, room, timeout);
  world->note("cupsBackChannelRead(room for " + std::to_string(room) + ", " + seconds(timeout)
              + ")");
  FakeWorld::Read piece = next(world->reads, FakeWorld::Read{});
  if (piece.bytes.empty()) return piece.result;
  auto const brought = std::min(room, piece.bytes.size());
  memcpy(buffer, piece.bytes.data(), brought);
  if (brought < piece.bytes.size()) world->reads.push_front({piece.bytes.substr(brought)});
  return static_cast<ssize_t>(brought);
}

unsigned __wrap_sleep(unsigned duration)
{
  if (!world) return __real_sleep(duration);
  world->note("sleep(" + std::to_string(duration) + ")");
  return world->unslept;
}

int __wrap_usleep(useconds_t duration)
{
  if (!world) return __real_usleep(duration);
  world->note("usleep(" + std::to_string(duration) + ")");
  return 0;
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
