// The FIFO, its directory and the process that writes into it.
#include "tests/harness/command_feeder.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <stdexcept>

CommandFeeder::CommandFeeder(std::function<void(int)> const& write_commands)
{
  if (!mkdtemp(directory_.data()) || mkfifo(path().c_str(), 0600) != 0)
    throw std::runtime_error("mkfifo");
  writer_ = fork();
  if (writer_ != 0) return;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  write_commands(open(path().c_str(), O_WRONLY));
  _exit(0);
}

CommandFeeder::~CommandFeeder()
{
  kill(writer_, SIGKILL);
  waitpid(writer_, nullptr, 0);
  unlink(path().c_str());
  rmdir(directory_.c_str());
}

void feed_text(int fifo, std::string const& text)
{
  for (std::size_t done = 0; done < text.size();) {
    ssize_t const written = write(fifo, text.data() + done, text.size() - done);
    if (written < 0) _exit(1);
    done += static_cast<std::size_t>(written);
  }
}

void wait_until_read(int fifo)
{
  int waiting = 1;
  while (ioctl(fifo, FIONREAD, &waiting) == 0 && waiting > 0) usleep(1000);
}
