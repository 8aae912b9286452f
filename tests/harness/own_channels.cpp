// The descriptors, and the two replaced calls. The program's own definitions come before those of
// the C library, for libcups too.
#include "tests/harness/own_channels.h"

#include <poll.h>
#include <sys/select.h>
#include <sys/syscall.h>

#include <ctime>
#include <utility>

#include "tests/harness/channel_ends.h"

namespace {

constexpr int BACK_CHANNEL = 3;
constexpr int SIDE_CHANNEL = 4;

OwnChannels const* channels = nullptr;

std::optional<int> begin(Wait wait) { return channels ? channels->begin(wait) : std::nullopt; }

FileDescriptor put_in_place(ChannelEnds ends, int number)
{
  if (dup2(ends.program.get(), number) != number) throw std::runtime_error("dup2");
  return std::move(ends.harness);
}

int poll_now(pollfd* descriptors, nfds_t count)
{
  timespec now{};
  return static_cast<int>(syscall(SYS_ppoll, descriptors, count, &now, nullptr, 0));
}

}  // namespace

OwnChannels::OwnChannels(int side_channel_type, Begin begin_wait)
    : side_channel(put_in_place(socket_ends(side_channel_type), SIDE_CHANNEL)),
      back_channel(put_in_place(pipe_to_program(), BACK_CHANNEL)),
      begin(std::move(begin_wait))
{
  channels = this;
}

OwnChannels::~OwnChannels() { channels = nullptr; }

bool has_come(int descriptor)
{
  pollfd asked{descriptor, POLLIN, 0};
  return poll_now(&asked, 1) != 0;
}

// It has a name of its own because the compiler takes poll for a function that does not look at
// `events`.
extern "C" int poll_without_time(pollfd* descriptors, nfds_t count,
                                 int milliseconds) __asm__("poll");

extern "C" int poll_without_time(pollfd* descriptors, nfds_t count, int /*milliseconds*/)
{
  auto const given = begin((descriptors->events & POLLIN) != 0 ? Wait::ForAnswer : Wait::ForRoom);
  return given ? *given : poll_now(descriptors, count);
}

extern "C" int select(int limit, fd_set* reading, fd_set* writing, fd_set* failing,
                      timeval* /*timeout*/)
{
  if (auto const given = begin(Wait::ForReply)) return *given;
  timespec now{};
  return static_cast<int>(syscall(SYS_pselect6, limit, reading, writing, failing, &now, nullptr));
}
