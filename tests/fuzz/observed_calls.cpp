// The filter's calls, taken down on their way to the library; time alone does not pass.
#include <cups/backend.h>
#include <cups/file.h>
#include <cups/sidechannel.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cstdio>

#include "diag/enumeration_bits.h"
#include "tests/fuzz/conversation.h"

namespace {

using Kind = Event::Kind;

}  // namespace

// The names that --wrap asks for are reserved ones; there is no other way to spell them.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
extern "C" {

ssize_t __real_writev(int descriptor, iovec const* pieces, int count);
std::size_t __real_fwrite(void const* data, std::size_t size, std::size_t count, FILE* stream);
int __real_fflush(FILE* stream);
unsigned __real_sleep(unsigned duration);
int __real_usleep(useconds_t duration);
cups_sc_status_t __real_cupsSideChannelDoRequest(cups_sc_command_t command, char* data, int* length,
                                                 double timeout);
ssize_t __real_cupsBackChannelRead(char* buffer, std::size_t room, double timeout);
char* __real_cupsFileGetConf(cups_file_t* file, char* buffer, std::size_t room, char** value,
                             int* line);

ssize_t __wrap_writev(int descriptor, iovec const* pieces, int count)
{
  if (!Conversation::current()) return __real_writev(descriptor, pieces, count);
  std::string text;
  for (int i = 0; i < count; ++i)
    text.append(static_cast<char const*>(pieces[i].iov_base), pieces[i].iov_len);
  Conversation::current()->note_message(text);
  return static_cast<ssize_t>(text.size());
}

std::size_t __wrap_fwrite(void const* data, std::size_t size, std::size_t count, FILE* stream)
{
  std::size_t const written = __real_fwrite(data, size, count, stream);
  if (Conversation::current())
    Conversation::current()->note({.kind = Kind::Write,
                                   .text = {static_cast<char const*>(data), size * count},
                                   .result = static_cast<long>(written)});
  return written;
}

int __wrap_fflush(FILE* stream)
{
  int const result = __real_fflush(stream);
  if (Conversation::current())
    Conversation::current()->note({.kind = Kind::Flush, .result = result});
  return result;
}

unsigned __wrap_sleep(unsigned duration)
{
  if (!Conversation::current()) return __real_sleep(duration);
  Conversation::current()->note({.kind = Kind::Sleep, .argument = duration});
  return 0;
}

int __wrap_usleep(useconds_t duration)
{
  if (!Conversation::current()) return __real_usleep(duration);
  Conversation::current()->note({.kind = Kind::Pause, .argument = duration});
  return 0;
}

// The status comes back as whatever number the backend's answer holds.
__attribute__((no_sanitize("enum"))) cups_sc_status_t __wrap_cupsSideChannelDoRequest(
    cups_sc_command_t command, char* data, int* length, double timeout)
{
  cups_sc_status_t const status = __real_cupsSideChannelDoRequest(command, data, length, timeout);
  int const number = enumeration_bits(status);
  Event event{.kind = Kind::Request, .argument = command, .timeout = timeout, .result = number};
  if (number == CUPS_SC_STATUS_OK) event.text.assign(data, static_cast<std::size_t>(*length));
  Conversation::current()->note(event);
  return status;
}

ssize_t __wrap_cupsBackChannelRead(char* buffer, std::size_t room, double timeout)
{
  ssize_t const got = __real_cupsBackChannelRead(buffer, room, timeout);
  Event event{
      .kind = Kind::Read, .argument = static_cast<long>(room), .timeout = timeout, .result = got};
  if (got > 0) event.text.assign(buffer, static_cast<std::size_t>(got));
  Conversation::current()->note(event);
  return got;
}

char* __wrap_cupsFileGetConf(cups_file_t* file, char* buffer, std::size_t room, char** value,
                             int* line)
{
  char* const result = __real_cupsFileGetConf(file, buffer, room, value, line);
  Event event{
      .kind = Kind::Directive, .argument = *line, .result = result ? static_cast<long>(room) : 0};
  if (result) event.text = buffer;
  Conversation::current()->note(event);
  return result;
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
