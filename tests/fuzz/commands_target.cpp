// The whole filter, with the real library: any command file, any bytes on both channels.
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cstdint>

#include "tests/fuzz/conversation.h"
#include "tests/fuzz/played_channels.h"
#include "tests/fuzz/require.h"
#include "tests/fuzz/run_rules.h"

int filter_main(int argc, char* argv[]);

namespace {

int command_file = -1;

// The next descriptor that an open would get: a leak would shift it.
int first_free_descriptor()
{
  int const descriptor = dup(STDOUT_FILENO);
  close(descriptor);
  return descriptor;
}

void write_command_file(std::string const& commands)
{
  auto const size = static_cast<ssize_t>(commands.size());
  require(ftruncate(command_file, 0) == 0, "the command file is empty");
  require(pwrite(command_file, commands.data(), commands.size(), 0) == size, "and filled");
}

int run_filter()
{
  std::string path = "/proc/self/fd/" + std::to_string(command_file);
  std::array<std::string, 6> arguments{"photo-queue", "1", "user", "title", "1", ""};
  std::array<char*, 8> argv{};
  for (std::size_t i = 0; i < arguments.size(); ++i) argv[i] = arguments[i].data();
  argv[6] = path.data();
  return filter_main(7, argv.data());
}

}  // namespace

// Standard output is the printer; 3 and 4 are kept free for the channels.
extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
  int const nowhere = open("/dev/null", O_RDWR);
  for (int descriptor : {1, 3, 4}) require(dup2(nowhere, descriptor) == descriptor, "descriptors");
  command_file = memfd_create("command file", 0);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
  Play play = read_play({reinterpret_cast<char const*>(data), size});
  write_command_file(play.commands);
  PlayedChannels const channels(play);
  int const free_before = first_free_descriptor();

  Conversation conversation;
  int const exit_status = run_filter();
  require(exit_status == walk_run(conversation), "the exit status");
  require(first_free_descriptor() == free_before, "every descriptor is closed");
  return 0;
}
