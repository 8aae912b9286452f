// The descriptors, and the two calls with which the CUPS library waits for them.
#include "tests/fuzz/played_channels.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <ctime>

#include "tests/fuzz/require.h"

namespace {

constexpr int BACK_CHANNEL = 3;
constexpr int SIDE_CHANNEL = 4;
constexpr char const* ENDS = "end";

PlayedChannels* channels = nullptr;

bool is_marker(std::string_view text)
{
  return text.size() >= 3 && text[0] == '=' && text[2] == '='
         && std::string_view("SBsb").find(text[1]) != std::string_view::npos;
}

std::size_t find_marker(std::string_view input, std::size_t from)
{
  while (from < input.size() && !is_marker(input.substr(from))) ++from;
  return from;
}

// Replaces `number` by the first of the pair and gives the second.
int put_in_place(std::array<int, 2> ends, int number)
{
  require(dup2(ends[0], number) == number && close(ends[0]) == 0, "the channel is in place");
  return ends[1];
}

int open_back_channel()
{
  std::array<int, 2> ends{};
  require(pipe2(ends.data(), O_NONBLOCK) == 0, "a pipe");
  return put_in_place(ends, BACK_CHANNEL);
}

int open_side_channel()
{
  std::array<int, 2> ends{};
  require(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends.data()) == 0, "a socket pair");
  return put_in_place(ends, SIDE_CHANNEL);
}

void end_channel(int& end)
{
  if (end >= 0) close(end);
  end = -1;
}

int poll_now(pollfd* descriptors, nfds_t count)
{
  timespec now{};
  return static_cast<int>(syscall(SYS_ppoll, descriptors, count, &now, nullptr, 0));
}

int select_now(int limit, fd_set* reading)
{
  timespec now{};
  return static_cast<int>(syscall(SYS_pselect6, limit, reading, nullptr, nullptr, &now, nullptr));
}

}  // namespace

Play read_play(std::string_view input)
{
  std::size_t at = find_marker(input, 0);
  Play play{.commands = std::string(input.substr(0, at))};
  while (at < input.size()) {
    std::size_t const next = find_marker(input, at + 3);
    char const kind = input[at + 1];
    bool const ends = kind == 's' || kind == 'b';
    auto& parts = kind == 'S' || kind == 's' ? play.side_channel : play.back_channel;
    parts.emplace_back(ends ? ENDS : "+" + std::string(input.substr(at + 3, next - at - 3)));
    at = next;
  }
  return play;
}

PlayedChannels::PlayedChannels(Play& script)
    : play(script), back_channel_end(open_back_channel()), side_channel_end(open_side_channel())
{
  channels = this;
}

PlayedChannels::~PlayedChannels()
{
  channels = nullptr;
  end_channel(back_channel_end);
  end_channel(side_channel_end);
}

PlayedChannels* PlayedChannels::current() { return channels; }

void PlayedChannels::bring_next_part(int descriptor)
{
  bool const back = descriptor == BACK_CHANNEL;
  auto& parts = back ? play.back_channel : play.side_channel;
  int& end = back ? back_channel_end : side_channel_end;
  if (parts.empty() || end < 0) return;
  if (parts.front() == ENDS)
    end_channel(end);
  else
      // What does not fit is lost, as it is with a backend that gives up.
      [[maybe_unused]]
    auto const written = write(end, parts.front().data() + 1, parts.front().size() - 1);
  parts.pop_front();
}

void PlayedChannels::take_requests() const
{
  std::array<char, 512> requests;
  while (side_channel_end >= 0
         && recv(side_channel_end, requests.data(), requests.size(), MSG_DONTWAIT) > 0)
    continue;
}

// The library waits for the side channel with this.
extern "C" int poll(pollfd* descriptors, nfds_t count, int /*milliseconds*/)
{
  if (!channels) return poll_now(descriptors, count);
  channels->take_requests();
  int const ready = poll_now(descriptors, count);
  if (ready != 0) return ready;
  channels->bring_next_part(descriptors[0].fd);
  return poll_now(descriptors, count);
}

// And for the back channel with this, only ever to read.
extern "C" int select(int limit, fd_set* reading, fd_set* /*writing*/, fd_set* /*failing*/,
                      timeval* /*timeout*/)
{
  fd_set const asked = *reading;
  int const ready = select_now(limit, reading);
  if (ready != 0 || !channels) return ready;
  *reading = asked;
  channels->bring_next_part(BACK_CHANNEL);
  return select_now(limit, reading);
}
