// How the five descriptors are made, and the executable started on them.
#include "tests/harness/filter_process.h"

#include <sys/mman.h>

#include <array>

#include "tests/harness/channel_ends.h"
#include "tests/harness/start_program.h"

namespace {

constexpr int CLOCK = 10;

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

std::vector<std::string> environment_of(Job const& job)
{
  std::vector<std::string> variables{"LC_ALL=C", std::string("LD_PRELOAD=") + CLOCK_PRELOAD_PATH,
                                     "CLOCK_DESCRIPTOR=" + std::to_string(CLOCK),
                                     "ASAN_OPTIONS=verify_asan_link_order=0:exitcode=99"};
  if (job.unbuffered_device) variables.emplace_back("UNBUFFERED_DEVICE=1");
  return own_environment_with(variables);
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
  for (FileDescriptor const* socket : {&messages.harness, &side_channel.harness, &clock.harness})
    fcntl(socket->get(), F_SETFL, O_NONBLOCK);

  std::vector<std::string> words{"photo-queue"};
  words.insert(words.end(), job.arguments.begin(), job.arguments.end());
  std::vector<int> descriptors{input.get(), device.program.get(), messages.program.get(),
                               back_channel.program.get(), side_channel.program.get()};
  descriptors.resize(CLOCK, -1);
  descriptors.push_back(clock.program.get());
  pid_t const pid = start_program(
      {job.program.empty() ? FILTER_PATH : job.program, words, environment_of(job), descriptors});
  return {pid,
          std::move(device.harness),
          std::move(messages.harness),
          std::move(back_channel.harness),
          std::move(side_channel.harness),
          std::move(clock.harness)};
}

std::string read_available(FileDescriptor const& descriptor)
{
  std::array<char, 1 << 16> buffer;
  std::string bytes;
  ssize_t count = 0;
  while ((count = read(descriptor.get(), buffer.data(), buffer.size())) > 0)
    bytes.append(buffer.data(), static_cast<std::size_t>(count));
  return bytes;
}
