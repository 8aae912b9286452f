// How an executable is started: its arguments, its environment, its descriptors.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

struct ProgramStart {
  std::string path;
  std::vector<std::string> words;        // its own name, then its arguments
  std::vector<std::string> environment;  // all of it, as "NAME=value"
  std::vector<int> descriptors;          // what it has as 0, 1, ...; closed where negative
};

// The program gets the descriptors and no others, and the signal of a dead stream at its
// default, as the scheduler starts a filter. Throws std::runtime_error when that cannot be done.
pid_t start_program(ProgramStart const& start);

// The environment of this process with these variables instead of its own.
std::vector<std::string> own_environment_with(std::vector<std::string> variables);
