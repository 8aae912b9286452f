// The device's node: a pipe that tells hosts when there is something for them to take.
#include "sim/usb/ready_pipe.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace sim {

namespace {

constexpr mode_t EVERYBODY = 0666;  // a scheduler's backend may run as another user
constexpr int SMALLEST = 1;         // the kernel makes it one page

using Chunk = std::array<char, 4096>;

}  // namespace

ReadyPipe::ReadyPipe(std::string const& path)
{
  unlink(path.c_str());
  if (mkfifo(path.c_str(), EVERYBODY) == 0 && chmod(path.c_str(), EVERYBODY) == 0)
    descriptor = open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) throw std::system_error(errno, std::generic_category(), path);
  fcntl(descriptor, F_SETPIPE_SZ, SMALLEST);
  show(false);
}

ReadyPipe::~ReadyPipe() { close(descriptor); }

void ReadyPipe::show(bool ready)
{
  if (ready != is_full) return;
  Chunk chunk{};
  while (ready ? read(descriptor, chunk.data(), chunk.size()) > 0
               : write(descriptor, chunk.data(), chunk.size()) > 0) {
  }
  is_full = !ready;
}

}  // namespace sim
