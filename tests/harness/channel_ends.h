// The two ends of a channel between a program under test and what plays its surroundings.
#pragma once

#include <sys/socket.h>

#include <array>

#include "tests/harness/file_descriptor.h"

struct ChannelEnds {
  FileDescriptor program;
  FileDescriptor harness;
};

inline ChannelEnds socket_ends(int type)
{
  std::array<int, 2> ends{};
  if (socketpair(AF_UNIX, type | SOCK_CLOEXEC, 0, ends.data()) != 0)
    throw std::runtime_error("socketpair");
  return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

// The reading end never blocks: so the scheduler supplies the back channel, and the harness
// only takes what is there.
inline ChannelEnds pipe_to_program()
{
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("pipe2");
  fcntl(ends[0], F_SETFL, O_NONBLOCK);
  return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

inline ChannelEnds pipe_to_harness()
{
  ChannelEnds reversed = pipe_to_program();
  return {std::move(reversed.harness), std::move(reversed.program)};
}
