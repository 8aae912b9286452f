// The real simulator as a child process: its messages, its standard input, its end.
#include "tests/harness/simulator_process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <utility>

namespace {

constexpr int PATIENCE_MS = 60'000;  // far beyond what the slowest machine needs

struct Pipe {
  int read_end;
  int write_end;
};

Pipe make_pipe()
{
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) std::abort();
  return {ends[0], ends[1]};
}

// Adds what can be read to the text; false at the end of the stream, or when nothing came.
bool read_more(int descriptor, std::string& text)
{
  pollfd ready{descriptor, POLLIN, 0};
  if (poll(&ready, 1, PATIENCE_MS) != 1) {
    ADD_FAILURE() << "the simulator keeps silent";
    return false;
  }
  std::array<char, 4096> bytes{};
  auto const size = read(descriptor, bytes.data(), bytes.size());
  if (size <= 0) return false;
  text.append(bytes.data(), static_cast<std::size_t>(size));
  return true;
}

std::string take_line(int descriptor, std::string& unread)
{
  while (unread.find('\n') == std::string::npos) {
    if (!read_more(descriptor, unread)) return "(nothing)";
  }
  auto const end = unread.find('\n');
  auto const line = unread.substr(0, end);
  unread.erase(0, end + 1);
  return line;
}

std::string take_rest(int descriptor, std::string& unread)
{
  while (read_more(descriptor, unread)) continue;
  return std::exchange(unread, "");
}

}  // namespace

SimulatorProcess::SimulatorProcess(std::vector<std::string> const& options, char const* input_file)
{
  ::signal(SIGPIPE, SIG_IGN);  // a simulator that has ended shows as a failed write
  auto const in = make_pipe();
  auto const out = make_pipe();
  auto const err = make_pipe();

  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  if (input_file == nullptr) {
    posix_spawn_file_actions_adddup2(&files, in.read_end, STDIN_FILENO);
  } else {
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, input_file, O_RDONLY, 0);
  }
  posix_spawn_file_actions_adddup2(&files, out.write_end, STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&files, err.write_end, STDERR_FILENO);

  std::string program = SIMULATOR;
  auto words = options;
  std::vector<char*> arguments{program.data()};
  for (auto& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  EXPECT_EQ(posix_spawn(&pid_, SIMULATOR, &files, nullptr, arguments.data(), environ), 0);

  posix_spawn_file_actions_destroy(&files);
  close(in.read_end);
  close(out.write_end);
  close(err.write_end);
  input_ = in.write_end;
  output_ = out.read_end;
  errors_ = err.read_end;
}

SimulatorProcess::~SimulatorProcess()
{
  if (pid_ > 0) {
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
  }
  end_input();
  close(output_);
  close(errors_);
}

std::uint16_t SimulatorProcess::port()
{
  std::string const start = "listening on 127.0.0.1:";
  auto const line = next_line();
  EXPECT_EQ(line.substr(0, start.size()), start);
  if (line.size() <= start.size()) return 0;
  return static_cast<std::uint16_t>(std::strtoul(line.c_str() + start.size(), nullptr, 10));
}

std::string SimulatorProcess::next_line() { return take_line(output_, unread_output_); }

std::string SimulatorProcess::next_error_line() { return take_line(errors_, unread_errors_); }

std::string SimulatorProcess::rest_of_output() { return take_rest(output_, unread_output_); }

std::string SimulatorProcess::rest_of_errors() { return take_rest(errors_, unread_errors_); }

int SimulatorProcess::exit_status()
{
  // Its output ends when it does. One that does not end has failed the test and is killed.
  rest_of_output();
  if (testing::Test::HasFailure()) kill(pid_, SIGKILL);
  int status = 0;
  waitpid(pid_, &status, 0);
  pid_ = -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void SimulatorProcess::order(std::string const& line) const
{
  auto const text = line + '\n';
  EXPECT_EQ(write(input_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
}

void SimulatorProcess::end_input()
{
  if (input_ >= 0) close(input_);
  input_ = -1;
}

void SimulatorProcess::signal(int number) const { kill(pid_, number); }
