// Instructions that a program executes in user space, counted by Valgrind: unlike a time,
// the same number in every run.
#pragma once

#include <map>
#include <string>

#include "tests/harness/answered_run.h"

// By object file, named by the last part of its path.
using Instructions = std::map<std::string, double>;

// Runs the program once under Callgrind. Throws std::runtime_error when that fails.
Instructions count_instructions(AnsweredProgram program);

double total(Instructions const& instructions);
