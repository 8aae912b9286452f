// How the scheduler starts a filter: its arguments, its environment, its descriptors 0 to 4.
#include "bench/player/start_program.h"

#include <spawn.h>

#include <csignal>
#include <stdexcept>

namespace {

// The same for every program, so that none has more to copy at its start.
std::vector<std::string> environment()
{
  return {"CHARSET=utf-8",      "CONTENT_TYPE=application/vnd.cups-command", "LANG=C.UTF-8",
          "PATH=/usr/bin:/bin", std::string("PPD=") + QUEUE_PPD_PATH,        "PRINTER=photo"};
}

std::vector<std::string> arguments(Job const& job)
{
  std::vector<std::string> words = job.program;
  for (char const* word : {"1", "user", "title", "1", ""}) words.emplace_back(word);
  words.push_back(job.command_file);
  return words;
}

std::vector<char*> pointers(std::vector<std::string>& words)
{
  std::vector<char*> result;
  for (std::string& word : words) result.push_back(word.data());
  result.push_back(nullptr);
  return result;
}

// The signal of a dead stream at its default, which the harness itself ignores.
class StartAttributes {
public:
  StartAttributes()
  {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setsigdefault(&attributes, &signals);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    posix_spawn_file_actions_init(&actions);
  }
  StartAttributes(StartAttributes const&) = delete;
  StartAttributes& operator=(StartAttributes const&) = delete;
  ~StartAttributes()
  {
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
  }

  posix_spawnattr_t attributes{};
  posix_spawn_file_actions_t actions{};
};

}  // namespace

pid_t start_program(Job const& job, std::array<int, 5> const& descriptors)
{
  StartAttributes start;
  for (int number = 0; number < 5; ++number)
    posix_spawn_file_actions_adddup2(&start.actions, descriptors[static_cast<size_t>(number)],
                                     number);
  std::vector<std::string> words = arguments(job);
  std::vector<std::string> variables = environment();
  pid_t pid = -1;
  if (posix_spawn(&pid, words.front().c_str(), &start.actions, &start.attributes,
                  pointers(words).data(), pointers(variables).data())
      != 0)
    throw std::runtime_error("cannot start " + words.front());
  return pid;
}
