// How the run is prepared: everything that the filter will wait for is already there.
#include "tests/shipped/traced_run.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <fstream>
#include <stdexcept>

#include "tests/harness/channel_ends.h"
#include "tests/harness/scripted_printer.h"
#include "tests/oracle/status_reply.h"
#include "tests/harness/temporary_file.h"

namespace {

constexpr int CANNOT_START = 96;

void fill(int descriptor, std::string const& bytes)
{
  if (write(descriptor, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
    throw std::runtime_error("a channel does not take its bytes");
}

// The replies to two queries; the first is read whole, since a read takes 512 bytes at most.
FileDescriptor back_channel()
{
  ChannelEnds channel = pipe_to_program();
  fill(channel.harness.get(), StatusReply{}.bytes(512) + StatusReply{}.bytes(192));
  return std::move(channel.program);
}

// The answers to the probe and to three drains, each of them a packet and so a read.
ChannelEnds side_channel()
{
  ChannelEnds channel = socket_ends(SOCK_SEQPACKET);
  fill(channel.harness.get(), side_channel_frame(SC_GET_BIDI, SC_OK, "\x01"));
  for (int drain = 0; drain < 3; ++drain)
    fill(channel.harness.get(), side_channel_frame(SC_DRAIN_OUTPUT, SC_OK));
  return channel;
}

std::vector<char*> pointers(std::vector<std::string>& strings)
{
  std::vector<char*> list;
  list.reserve(strings.size() + 1);
  for (std::string& string : strings) list.push_back(string.data());
  list.push_back(nullptr);
  return list;
}

[[noreturn]] void become_strace(std::array<int, 5> const& descriptors,
                                std::vector<std::string> arguments,
                                std::vector<std::string> environment)
{
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  for (int number = 0; number < 5; ++number)
    dup2(descriptors[static_cast<std::size_t>(number)], number);
  close_range(5, ~0U, 0);
  execve(STRACE_PATH, pointers(arguments).data(), pointers(environment).data());
  _exit(CANNOT_START);
}

std::string content_of(FileDescriptor const& file)
{
  std::string text(1 << 16, '\0');
  ssize_t const size = pread(file.get(), text.data(), text.size(), 0);
  text.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
  return text;
}

// "1234  name(arguments) = result"; strace's own remarks hold no call and are left out.
std::vector<SystemCall> read_trace(std::string const& path)
{
  std::vector<SystemCall> calls;
  std::ifstream trace(path);
  for (std::string line; std::getline(trace, line);) {
    auto const name = line.find_first_not_of(" 0123456789");
    auto const opening = line.find('(');
    auto const closing = line.rfind(") ");
    if (opening == std::string::npos || closing == std::string::npos) continue;
    calls.push_back(
        {line.substr(name, opening - name), line.substr(opening + 1, closing - opening - 1)});
  }
  auto const main_starts = std::find_if(calls.begin(), calls.end(), [](SystemCall const& call) {
    return call.name == "rt_sigaction" && call.arguments.starts_with("SIGPIPE, ");
  });
  calls.erase(calls.begin(), main_starts);
  return calls;
}

}  // namespace

TracedRun trace_filter(std::vector<std::string> environment)
{
  TemporaryFile const commands("ReportLevels\nReportStatus\n");
  TemporaryFile const trace("");
  FileDescriptor const nowhere(open("/dev/null", O_RDWR | O_CLOEXEC));
  FileDescriptor const messages(memfd_create("messages", MFD_CLOEXEC));
  FileDescriptor const back = back_channel();
  ChannelEnds const side = side_channel();

  pid_t const pid = fork();
  if (pid < 0) throw std::runtime_error("fork");
  if (pid == 0)
    become_strace({nowhere.get(), nowhere.get(), messages.get(), back.get(), side.program.get()},
                  {"strace", "-f", "-s", "4096", "-o", trace.path(), FILTER_PATH, "1", "user",
                   "title", "1", "", commands.path()},
                  std::move(environment));
  int status = 0;
  waitpid(pid, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, content_of(messages), commands.path(),
          read_trace(trace.path())};
}
