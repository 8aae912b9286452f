// Redirection of descriptor 2 into memory, as text or as single writes.
#include "tests/harness/stderr_capture.h"

#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

// A test without its descriptors proves nothing, so it does not go on.
int checked(int result)
{
  if (result < 0) abort();
  return result;
}

}  // namespace

Descriptor2::Descriptor2(int replacement) : saved_(checked(dup(2)))
{
  checked(dup2(replacement, 2));
}

Descriptor2::~Descriptor2()
{
  dup2(saved_, 2);
  close(saved_);
}

StderrCapture::StderrCapture() : file_(checked(memfd_create("stderr", 0))), redirection_(file_) {}

StderrCapture::~StderrCapture() { close(file_); }

std::string StderrCapture::take()
{
  std::string text;
  std::array<char, 65536> piece;
  ssize_t got;
  while ((got = pread(file_, piece.data(), piece.size(), taken_)) > 0) {
    text.append(piece.data(), static_cast<std::size_t>(got));
    taken_ += got;
  }
  return text;
}

StderrWrites::Ends StderrWrites::packet_pair()
{
  int pair[2];
  checked(socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK, 0, pair));
  return {pair[0], pair[1]};
}

StderrWrites::~StderrWrites()
{
  close(ends_.in);
  close(ends_.out);
}

std::vector<std::string> StderrWrites::take()
{
  std::vector<std::string> writes;
  std::array<char, 65536> packet;
  ssize_t got;
  while ((got = recv(ends_.out, packet.data(), packet.size(), 0)) > 0) {
    writes.emplace_back(packet.data(), static_cast<std::size_t>(got));
  }
  return writes;
}

bool each_is_one_line(std::vector<std::string> const& writes)
{
  return std::all_of(writes.begin(), writes.end(),
                     [](std::string const& text) { return text.find('\n') == text.size() - 1; });
}
