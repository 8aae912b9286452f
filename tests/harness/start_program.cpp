// How an executable is started.
#include "tests/harness/start_program.h"

#include <spawn.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <stdexcept>

namespace {

std::vector<char*> pointers(std::vector<std::string>& words)
{
  std::vector<char*> result;
  for (std::string& word : words) result.push_back(word.data());
  result.push_back(nullptr);
  return result;
}

class StartAttributes {
public:
  explicit StartAttributes(std::vector<int> const& descriptors)
  {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setsigdefault(&attributes, &signals);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    posix_spawn_file_actions_init(&actions);
    for (int number = 0; number < static_cast<int>(descriptors.size()); ++number) {
      int const source = descriptors[static_cast<std::size_t>(number)];
      if (source >= 0)
        posix_spawn_file_actions_adddup2(&actions, source, number);
      else
        posix_spawn_file_actions_addclose(&actions, number);
    }
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

pid_t start_program(ProgramStart const& start)
{
  // Whatever this process was started with stays here.
  close_range(3, ~0U, CLOSE_RANGE_CLOEXEC);
  StartAttributes const how(start.descriptors);
  std::vector<std::string> words = start.words;
  std::vector<std::string> environment = start.environment;
  pid_t pid = -1;
  if (posix_spawn(&pid, start.path.c_str(), &how.actions, &how.attributes, pointers(words).data(),
                  pointers(environment).data())
      != 0)
    throw std::runtime_error("cannot start " + start.path);
  return pid;
}

std::vector<std::string> own_environment_with(std::vector<std::string> variables)
{
  for (char** own = environ; *own; ++own) {
    std::string const variable = *own;
    std::string const name = variable.substr(0, variable.find('=') + 1);
    if (std::ranges::none_of(variables, [&](auto const& v) { return v.starts_with(name); }))
      variables.push_back(variable);
  }
  return variables;
}
