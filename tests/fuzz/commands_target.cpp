// The whole filter, with the real library: any command file, any bytes on both channels.
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cstdint>

#include "tests/harness/recording.h"
#include "tests/harness/require.h"
#include "tests/harness/scripted_channels.h"
#include "tests/oracle/run.h"

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

// Messages are only taken down, and no time passes; all else is the library's.
int run_recorded(Recording& recording)
{
  OutsideCalls const calls(
      [&](Call const& call) -> std::optional<Outcome> {
        using Kind = Call::Kind;
        if (call.kind != Kind::Message && call.kind != Kind::Sleep && call.kind != Kind::Pause)
          return std::nullopt;
        recording.note(call, {});
        return Outcome{};
      },
      [&](Call const& call, Outcome const& outcome) { recording.note(call, outcome); });
  return run_filter();
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
  ScriptedChannels const channels({reinterpret_cast<char const*>(data), size});
  write_command_file(channels.commands);
  int const free_before = first_free_descriptor();

  Recording recording;
  int const exit_status = run_recorded(recording);
  int const told = tell_run({[&](Call const& call) { return recording.expect_call(call); },
                             [&](std::string_view text) { recording.expect_message(text); }});
  recording.expect_end();
  require(exit_status == told, "the exit status");
  require(first_free_descriptor() == free_before, "every descriptor is closed");
  return 0;
}
