// How the five descriptors are made and put in place, and the executable started on them.
#include "tests/program/filter_process.h"

#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>

#include <array>
#include <csignal>
#include <cstdlib>

namespace {

constexpr int CLOCK = 10;
constexpr int CANNOT_START = 96;

struct Ends {
  FileDescriptor filter;
  FileDescriptor harness;
};

Ends socket_ends(int type)
{
  std::array<int, 2> ends{};
  if (socketpair(AF_UNIX, type | SOCK_CLOEXEC, 0, ends.data()) != 0)
    throw std::runtime_error("socketpair");
  return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

// `filter_reads` tells which end of the pipe is the filter's. Neither end ever blocks: the
// scheduler supplies the back channel so, and the harness only takes what is there.
Ends pipe_ends(bool filter_reads)
{
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("pipe2");
  fcntl(ends[0], F_SETFL, O_NONBLOCK);
  FileDescriptor reader(ends[0]);
  FileDescriptor writer(ends[1]);
  if (filter_reads) return {std::move(reader), std::move(writer)};
  return {std::move(writer), std::move(reader)};
}

Ends device_ends(DeviceStream kind)
{
  Ends ends;
  if (kind == DeviceStream::Pipe || kind == DeviceStream::BrokenPipe) ends = pipe_ends(false);
  if (kind == DeviceStream::BrokenPipe) ends.harness.reset();
  if (kind == DeviceStream::FullDevice) ends.filter = FileDescriptor(open("/dev/full", O_WRONLY));
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
  Ends device = device_ends(job.device);
  Ends messages = socket_ends(SOCK_SEQPACKET);
  Ends back_channel = pipe_ends(true);
  Ends side_channel = socket_ends(SOCK_STREAM);
  Ends clock = socket_ends(SOCK_SEQPACKET);

  pid_t const pid = fork();
  if (pid < 0) throw std::runtime_error("fork");
  if (pid == 0)
    become_filter({input.get(), device.filter.get(), messages.filter.get(),
                   back_channel.filter.get(), side_channel.filter.get()},
                  clock.filter.get(), job);
  return {pid,
          std::move(device.harness),
          std::move(messages.harness),
          std::move(back_channel.harness),
          std::move(side_channel.harness),
          std::move(clock.harness)};
}
