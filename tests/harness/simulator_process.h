// The real simulator as a child process: its messages, its standard input, its end.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <vector>

class SimulatorProcess {
public:
  // Starts it. Its standard input is a pipe for orders, or this file if one is given.
  explicit SimulatorProcess(std::vector<std::string> const& options,
                            char const* input_file = nullptr);
  // Ends it, if it has not ended yet.
  ~SimulatorProcess();

  SimulatorProcess(SimulatorProcess const&) = delete;
  SimulatorProcess& operator=(SimulatorProcess const&) = delete;

  // Each waits for what it returns; a simulator that does not deliver within a generous time
  // fails the test, with "(nothing)" as the line.
  std::uint16_t port();     // from its first line
  std::string next_line();  // of standard output
  std::string next_error_line();
  std::string rest_of_output();  // until its end
  std::string rest_of_errors();
  int exit_status();  // -1 if a signal ended it

  void order(std::string const& line) const;
  void end_input();
  void signal(int number) const;

private:
  pid_t pid_ = -1;
  int input_ = -1;
  int output_ = -1;
  int errors_ = -1;
  std::string unread_output_;
  std::string unread_errors_;
};
