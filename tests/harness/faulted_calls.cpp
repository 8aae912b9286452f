// Which call takes part in which step, and the system calls of libcups: a program's own
// definitions come before the C library's.
#include "tests/harness/faulted_calls.h"

#include <fcntl.h>
#include <stdio_ext.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <utility>

#include "tests/harness/counted_allocations.h"

namespace {

constexpr int BACK_CHANNEL = 3;
constexpr int SIDE_CHANNEL = 4;

Fault planned;
StepCounts* watched = nullptr;

Step step_of(Call::Kind kind)
{
  switch (kind) {
    case Call::Kind::Message:
      return Step::Message;
    case Call::Kind::Write:
      return Step::DeviceWrite;
    case Call::Kind::Flush:
      return Step::DeviceFlush;
    case Call::Kind::Sleep:
      return Step::Sleep;
    case Call::Kind::Pause:
      return Step::Pause;
    default:
      return Step::StandardInput;
  }
}

Step step_of_read(int descriptor)
{
  if (descriptor == BACK_CHANNEL) return Step::ReplyRead;
  return descriptor == SIDE_CHANNEL ? Step::AnswerRead : Step::FileRead;
}

void lose_reply()
{
  std::array<char, 512> lost;
  while (syscall(SYS_read, BACK_CHANNEL, lost.data(), lost.size()) > 0) continue;
}

}  // namespace

void watch_steps(Fault const& fault, StepCounts* counts)
{
  planned = fault;
  watched = counts;
  let_allocations_fail([] { return step_fails(Step::Allocation); });
}

StepCounts* stop_watching() { return std::exchange(watched, nullptr); }

void go_on_watching(StepCounts* counts) { watched = counts; }

bool step_fails(Step step)
{
  if (!watched || !planned.hits(step, count_of(*watched, step)++)) return false;
  errno = planned.error;
  return true;
}

std::optional<Outcome> outcome_of_fault(Call const& call)
{
  bool const of_library = call.kind == Call::Kind::Request || call.kind == Call::Kind::Read;
  if (of_library || !step_fails(step_of(call.kind))) return std::nullopt;
  // What could not be flushed is lost and does not go out with the next command.
  if (call.kind == Call::Kind::Flush) __fpurge(stdout);
  errno = planned.error;
  return Outcome{planned.result};
}

std::optional<int> outcome_of_fault(Wait wait)
{
  constexpr Step STEPS_OF_WAITS[] = {Step::RequestWait, Step::AnswerWait, Step::ReplyWait};
  if (!step_fails(STEPS_OF_WAITS[static_cast<std::size_t>(wait)])) return std::nullopt;
  return static_cast<int>(planned.result);
}

// The C library names its parameters with reserved words.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {

int open(char const* path, int flags, ...)
{
  if (step_fails(Step::FileOpen)) return -1;
  va_list rest;
  va_start(rest, flags);
  int const mode = (flags & O_CREAT) != 0 ? va_arg(rest, int) : 0;
  va_end(rest);
  return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

// A read that brings less leaves the rest, in the side channel's packet it is lost.
ssize_t read(int descriptor, void* buffer, std::size_t room)
{
  if (!step_fails(step_of_read(descriptor))) return syscall(SYS_read, descriptor, buffer, room);
  auto const brought = static_cast<std::size_t>(std::max(planned.result, 0L));
  if (brought > 0) return syscall(SYS_read, descriptor, buffer, std::min(room, brought));
  if (descriptor == BACK_CHANNEL) lose_reply();
  errno = planned.error;
  return planned.result;
}

ssize_t write(int descriptor, void const* data, std::size_t size)
{
  if (descriptor != SIDE_CHANNEL || !step_fails(Step::RequestWrite))
    return syscall(SYS_write, descriptor, data, size);
  if (planned.result < 0) return planned.result;
  return syscall(SYS_write, descriptor, data, static_cast<std::size_t>(planned.result));
}

// A descriptor is free again whatever close says.
int close(int descriptor)
{
  int const result = static_cast<int>(syscall(SYS_close, descriptor));
  return step_fails(Step::FileClose) ? -1 : result;
}

}  // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
