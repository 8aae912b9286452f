// A program whose answers all lie ready in its channels when it starts: nobody has to play, so
// tools may watch it in real time.
#pragma once

#include <string>
#include <vector>

struct AnsweredProgram {
  std::vector<std::string> words;  // its path, then its arguments
  std::vector<std::string> environment{};
  std::vector<std::string> answers;  // of the side channel, each read at once
  std::vector<std::string> replies;  // of the back channel, each read at once
};

struct AnsweredRun {
  int exit_status = -1;  // negative when a signal ended it
  std::string messages{};
  std::string device{};
};

// The answers that the filter gets to its probe, and to the drains of its wake-up and of so many
// queries.
std::vector<std::string> answers_for_queries(int queries);

AnsweredRun run_answered(AnsweredProgram const& program);
