// The replaced calls. Those of our own code come here with --wrap, those of libcups because a
// program's own definitions come before the C library's.
#include "tests/faults/outside_calls.h"

#include <cups/file.h>
#include <fcntl.h>
#include <poll.h>
#include <stdio_ext.h>
#include <sys/select.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <ctime>
#include <utility>

#include "tests/faults/played_printer.h"

namespace {

constexpr int BACK_CHANNEL = 3;
constexpr int SIDE_CHANNEL = 4;

Fault planned;
CallCounts* calls = nullptr;
int attempts_file = -1;

Call kind_of_read(int descriptor)
{
  if (descriptor == BACK_CHANNEL) return Call::ReplyRead;
  return descriptor == SIDE_CHANNEL ? Call::AnswerRead : Call::FileRead;
}

void lose_reply()
{
  std::array<char, 512> lost;
  while (syscall(SYS_read, BACK_CHANNEL, lost.data(), lost.size()) > 0) continue;
}

// The played printer's own calls do not count.
void let_play(void (*move)())
{
  CallCounts* const counted = std::exchange(calls, nullptr);
  if (counted) move();
  calls = counted;
}

}  // namespace

void watch_calls(Fault const& fault, CallCounts* counts, int attempts)
{
  planned = fault;
  attempts_file = attempts;
  calls = counts;
}

void stop_watching() { calls = nullptr; }

bool call_fails(Call call)
{
  if (!calls || !planned.hits(call, count_of(*calls, call)++)) return false;
  errno = planned.error;
  return true;
}

// The names that --wrap asks for are reserved ones, and the C library names its parameters
// with reserved words.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {

std::size_t __real_fwrite(void const* data, std::size_t size, std::size_t count, FILE* stream);
int __real_fflush(FILE* stream);
ssize_t __real_writev(int descriptor, iovec const* pieces, int count);
unsigned __real_sleep(unsigned duration);
int __real_usleep(useconds_t duration);
cups_file_t* __real_cupsFileStdin();

std::size_t __wrap_fwrite(void const* data, std::size_t size, std::size_t count, FILE* stream)
{
  if (stream == stdout && call_fails(Call::DeviceWrite))
    return static_cast<std::size_t>(planned.result);
  return __real_fwrite(data, size, count, stream);
}

// What could not be flushed is lost and does not go out with the next command.
int __wrap_fflush(FILE* stream)
{
  if (stream != stdout || !call_fails(Call::DeviceFlush)) return __real_fflush(stream);
  __fpurge(stdout);
  errno = planned.error;
  return EOF;
}

ssize_t __wrap_writev(int descriptor, iovec const* pieces, int count)
{
  if (calls) {
    __real_writev(attempts_file, pieces, count);
    syscall(SYS_write, attempts_file, "", 1);
  }
  return call_fails(Call::Message) ? planned.result : __real_writev(descriptor, pieces, count);
}

unsigned __wrap_sleep(unsigned duration)
{
  if (call_fails(Call::Sleep)) return static_cast<unsigned>(planned.result);
  return calls ? 0 : __real_sleep(duration);
}

int __wrap_usleep(useconds_t duration)
{
  if (call_fails(Call::Pause)) return static_cast<int>(planned.result);
  return calls ? 0 : __real_usleep(duration);
}

cups_file_t* __wrap_cupsFileStdin()
{
  return call_fails(Call::StandardInput) ? nullptr : __real_cupsFileStdin();
}

int open(char const* path, int flags, ...)
{
  if (call_fails(Call::FileOpen)) return -1;
  va_list rest;
  va_start(rest, flags);
  int const mode = (flags & O_CREAT) != 0 ? va_arg(rest, int) : 0;
  va_end(rest);
  return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

// A read that brings less leaves the rest, in the side channel's packet it is lost.
ssize_t read(int descriptor, void* buffer, std::size_t room)
{
  if (!call_fails(kind_of_read(descriptor))) return syscall(SYS_read, descriptor, buffer, room);
  auto const brought = static_cast<std::size_t>(std::max(planned.result, 0L));
  if (brought > 0) return syscall(SYS_read, descriptor, buffer, std::min(room, brought));
  if (descriptor == BACK_CHANNEL) lose_reply();
  errno = planned.error;
  return planned.result;
}

ssize_t write(int descriptor, void const* data, std::size_t size)
{
  if (descriptor != SIDE_CHANNEL || !call_fails(Call::RequestWrite))
    return syscall(SYS_write, descriptor, data, size);
  if (planned.result < 0) return planned.result;
  return syscall(SYS_write, descriptor, data, static_cast<std::size_t>(planned.result));
}

// A descriptor is free again whatever close says.
int close(int descriptor)
{
  int const result = static_cast<int>(syscall(SYS_close, descriptor));
  return call_fails(Call::FileClose) ? -1 : result;
}

// No time passes: what the backend has not answered by then does not come. It has a name of its
// own because the compiler takes poll for a function that does not look at `events`.
int poll_without_time(pollfd* descriptors, nfds_t count, int milliseconds) __asm__("poll");

int poll_without_time(pollfd* descriptors, nfds_t count, int /*milliseconds*/)
{
  bool const answer = descriptors->events == POLLIN;
  if (call_fails(answer ? Call::AnswerWait : Call::RequestWait))
    return static_cast<int>(planned.result);
  if (answer) let_play(answer_request);
  timespec now{};
  return static_cast<int>(syscall(SYS_ppoll, descriptors, count, &now, nullptr, 0));
}

int select(int limit, fd_set* reading, fd_set* writing, fd_set* failing, timeval* /*timeout*/)
{
  if (call_fails(Call::ReplyWait)) return static_cast<int>(planned.result);
  let_play(send_reply);
  timespec now{};
  return static_cast<int>(syscall(SYS_pselect6, limit, reading, writing, failing, &now, nullptr));
}

}  // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
