// The replaced calls of the exchange; the linker sends them here with --wrap.
#include "tests/fuzz/scripted_calls.h"

#include <cups/backend.h>
#include <cups/sidechannel.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "tests/fuzz/conversation.h"
#include "tests/harness/foreign_enum.h"

namespace {

std::uint8_t const* script = nullptr;
std::size_t script_size = 0;
std::size_t next_byte = 0;

// Once the script has ended, every call fails.
unsigned next() { return next_byte < script_size ? script[next_byte++] : 0xff; }

using Kind = Event::Kind;

}  // namespace

void follow_script(std::uint8_t const* bytes, std::size_t size)
{
  script = bytes;
  script_size = size;
  next_byte = 0;
}

// The names that --wrap asks for are reserved ones; there is no other way to spell them.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
extern "C" {

ssize_t __real_writev(int descriptor, iovec const* pieces, int count);
std::size_t __real_fwrite(void const* data, std::size_t size, std::size_t count, FILE* stream);
int __real_fflush(FILE* stream);
unsigned __real_sleep(unsigned duration);
int __real_usleep(useconds_t duration);

// A standard error that is closed or full must change nothing: it fails now and then.
ssize_t __wrap_writev(int descriptor, iovec const* pieces, int count)
{
  if (!Conversation::current()) return __real_writev(descriptor, pieces, count);
  std::string text;
  for (int i = 0; i < count; ++i)
    text.append(static_cast<char const*>(pieces[i].iov_base), pieces[i].iov_len);
  Conversation::current()->note_message(text);
  return next_byte % 3 == 2 ? -1 : static_cast<ssize_t>(text.size());
}

// Mostly takes all; a script byte from 0xf8 on cuts it short.
std::size_t __wrap_fwrite(void const* data, std::size_t size, std::size_t count, FILE* stream)
{
  if (!Conversation::current()) return __real_fwrite(data, size, count, stream);
  unsigned const decision = next();
  std::size_t const taken = decision < 0xf8 ? count : decision % count;
  Conversation::current()->note({.kind = Kind::Write,
                                 .text = {static_cast<char const*>(data), size * count},
                                 .result = static_cast<long>(taken)});
  return taken;
}

int __wrap_fflush(FILE* stream)
{
  if (!Conversation::current()) return __real_fflush(stream);
  int const result = next() < 0xf8 ? 0 : EOF;
  Conversation::current()->note({.kind = Kind::Flush, .result = result});
  return result;
}

// The status is any signed byte, as a backend may send it; below 0x80 mostly OK. The data
// fills as much of the room as the script says, and the length is not to be trusted.
cups_sc_status_t __wrap_cupsSideChannelDoRequest(cups_sc_command_t command, char* data, int* length,
                                                 double timeout)
{
  unsigned const decision = next();
  int const status =
      decision < 0x70 ? CUPS_SC_STATUS_OK : static_cast<signed char>(decision - 0x70);
  auto const fill = static_cast<int>(next());
  std::memset(data, fill, static_cast<std::size_t>(*length) * next() / 255);
  *length = static_cast<int>(next() << 24) | *length;
  Conversation::current()->note(
      {.kind = Kind::Request, .argument = command, .timeout = timeout, .result = status});
  return foreign_enum<cups_sc_status_t>(status);
}

// 0xff and 0xfe: an error and silence. Else a piece of that length, up to all of the room,
// filled with the next byte.
ssize_t __wrap_cupsBackChannelRead(char* buffer, std::size_t room, double timeout)
{
  unsigned const decision = next();
  Event event{.kind = Kind::Read, .argument = static_cast<long>(room), .timeout = timeout};
  if (decision >= 0xfe)
    event.result = decision == 0xff ? -1 : 0;
  else {
    event.text.assign(std::min<std::size_t>(2 * decision + 1, room), static_cast<char>(next()));
    event.result = static_cast<long>(event.text.size());
    std::copy(event.text.begin(), event.text.end(), buffer);
  }
  Conversation::current()->note(event);
  return event.result;
}

// A signal may cut a pause short.
unsigned __wrap_sleep(unsigned duration)
{
  if (!Conversation::current()) return __real_sleep(duration);
  Conversation::current()->note({.kind = Kind::Sleep, .argument = duration});
  return next() % (duration + 1);
}

int __wrap_usleep(useconds_t duration)
{
  if (!Conversation::current()) return __real_usleep(duration);
  Conversation::current()->note({.kind = Kind::Pause, .argument = duration});
  return next() % 2 == 0 ? 0 : -1;
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
