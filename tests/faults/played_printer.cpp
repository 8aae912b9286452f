// The other ends of the channels, and what they have to say.
#include "tests/faults/played_printer.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <vector>

namespace {

// Above every number that a descriptor of the filter gets.
constexpr int SIDE_CHANNEL_END = 40;
constexpr int BACK_CHANNEL_END = 41;
constexpr int SPARE = 42;

constexpr int SIDE_CHANNEL = 4;
constexpr char GET_BIDI = 3;

int device_file = -1;
off_t heard = 0;
std::size_t status_queries = 0;
std::vector<std::string> pieces;  // of the reply that is on its way

void put(int from, int to)
{
  if (dup2(from, to) != to) abort();
  close(from);
}

std::string hear_device()
{
  std::array<char, 256> bytes;
  ssize_t const count = pread(device_file, bytes.data(), bytes.size(), heard);
  if (count <= 0) return "";
  heard += count;
  return {bytes.data(), static_cast<std::size_t>(count)};
}

std::size_t occurrences(std::string const& text, std::string const& word)
{
  std::size_t count = 0;
  for (std::size_t at = 0; (at = text.find(word, at)) != std::string::npos; ++at) ++count;
  return count;
}

void hear_queries()
{
  std::string const commands = hear_device();
  if (commands.empty()) return;
  pieces.clear();
  status_queries += occurrences(commands, "\033V21");
  if (commands.ends_with(std::string("\033V10\0\0", 6)))
    pieces = {job_status_reply()};
  else if (status_queries == 3)
    pieces = {status_reply(2).bytes().substr(0, CUT), status_reply(2).bytes().substr(CUT)};
  else if (status_queries > 0)
    pieces = {status_reply(status_queries - 1).bytes()};
}

}  // namespace

StatusReply status_reply(std::size_t number)
{
  if (number == 0) return {.power = 1};
  if (number == 1) return {};
  return {.error = {1, 2, 3}};
}

std::string job_status_reply()
{
  return std::string(8, '\x11') + "P0\x01\x02" + std::string(8, '\x22');
}

// Packets keep the borders between requests, and between answers.
void play_printer(int device)
{
  device_file = device;
  std::array<int, 2> side{};
  std::array<int, 2> back{};
  if (socketpair(AF_UNIX, SOCK_SEQPACKET, 0, side.data()) != 0 || pipe(back.data()) != 0) abort();
  put(side[1], SIDE_CHANNEL_END);
  put(back[1], BACK_CHANNEL_END);
  put(side[0], SPARE);
  put(back[0], 3);
  put(SPARE, SIDE_CHANNEL);
  fcntl(3, F_SETFL, O_NONBLOCK);
}

void answer_request()
{
  std::array<char, 64> request;
  std::array<char, 64> late;
  ssize_t size = 0;
  for (ssize_t got = 0;
       (got = recv(SIDE_CHANNEL_END, request.data(), request.size(), MSG_DONTWAIT)) > 0;)
    size = got;
  if (size == 0) return;
  while (recv(SIDE_CHANNEL, late.data(), late.size(), MSG_DONTWAIT) > 0) continue;
  // A torn request gets no answer.
  std::string const answer =
      request[0] == GET_BIDI ? std::string("\3\1\0\1\1", 5) : std::string("\2\1\0\0", 4);
  if (size == 4) send(SIDE_CHANNEL_END, answer.data(), answer.size(), 0);
}

void send_reply()
{
  hear_queries();
  if (pieces.empty()) return;
  if (write(BACK_CHANNEL_END, pieces.front().data(), pieces.front().size()) < 0) abort();
  pieces.erase(pieces.begin());
}

void end_play() { std::vector<std::string>().swap(pieces); }
