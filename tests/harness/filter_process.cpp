// How the five descriptors are made and put in place, and the executable started on them.
#include "tests/harness/filter_process.h"

#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>

#include <array>
#include <csignal>
#include <cstdlib>

#include "tests/harness/channel_ends.h"

namespace {

constexpr int CLOCK = 10;
constexpr int CANNOT_START = 96;

ChannelEnds device_ends(DeviceStream kind)
{
  ChannelEnds ends;
  if (kind == DeviceStream::Pipe || kind == DeviceStream::BrokenPipe) ends = pipe_to_harness();
  if (kind == DeviceStream::BrokenPipe) ends.harness.reset();
  if (kind == DeviceStream::FullDevice) ends.program = FileDescriptor(open("/dev/full", O_WRONLY));
  return ends;
}

FileDescriptor file_of(std::string const& content)
{
  FileDescriptor file(memfd_create("standard input", MFD_CLOEXEC));
  if (pwrite(file.get(), content.data(), content.size(), 0) != static_cast<ssize_t>(content.size()))
    throw std::runtime_error("memfd");
  return file;
}

void set_environment(Job const& job)
{
  setenv("LC_ALL", "C", 1);
  setenv("LD_PRELOAD", CLOCK_PRELOAD_PATH, 1);
  setenv("CLOCK_DESCRIPTOR", std::to_string(CLOCK).c_str(), 1);
  setenv("ASAN_OPTIONS", "verify_asan_link_order=0:exitcode=99", 1);
  if (job.unbuffered_device) setenv("UNBUFFERED_DEVICE", "1", 1);
}

// Runs in the child: nothing but 0 to 4 and the clock is inherited, and the signal of a dead
// stream is at its default, as the scheduler leaves it.
[[noreturn]] void become_filter(std::array<int, 5> const& descriptors, int clock, Job const& job)
{
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  signal(SIGPIPE, SIG_DFL);
  set_environment(job);
  close_range(0, ~0U, CLOSE_RANGE_CLOEXEC);
  for (int number = 0; number < 5; ++number) {
    int const source = descriptors[static_cast<size_t>(number)];
    if (source >= 0)
      dup2(source, number);
    else
      close(number);
  }
  dup2(clock, CLOCK);

  std::string name = "photo-queue";
  std::vector<std::string> arguments = job.arguments;
  std::vector<char*> argv{name.data()};
  for (std::string& argument : arguments) argv.push_back(argument.data());
  argv.push_back(nullptr);
  execv(FILTER_PATH, argv.data());
  _exit(CANNOT_START);
}

}  // namespace

FilterProcess start_filter(Job const& job)
{
  FileDescriptor const input = file_of(job.standard_input);
  ChannelEnds device = device_ends(job.device);
  ChannelEnds messages = socket_ends(SOCK_SEQPACKET);
  ChannelEnds back_channel = pipe_to_program();
  ChannelEnds side_channel = socket_ends(SOCK_STREAM);
  ChannelEnds clock = socket_ends(SOCK_SEQPACKET);

  pid_t const pid = fork();
  if (pid < 0) throw std::runtime_error("fork");
  if (pid == 0)
    become_filter({input.get(), device.program.get(), messages.program.get(),
                   back_channel.program.get(), side_channel.program.get()},
                  clock.program.get(), job);
  return {pid,
          std::move(device.harness),
          std::move(messages.harness),
          std::move(back_channel.harness),
          std::move(side_channel.harness),
          std::move(clock.harness)};
}
