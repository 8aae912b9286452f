// One command job: a real program on descriptors 0 to 4, between a played scheduler, a played
// backend and a played printer that is awake and well.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/harness/answered_run.h"
#include "tests/harness/file_descriptor.h"

// What the program has as standard error: the scheduler's pipe, or packets that keep the
// borders between its writes.
enum class Messages : std::uint8_t { Pipe, Packets };

struct Job {
  std::vector<std::string> program;  // its path, after that of a tool that watches it
  std::string command_file;          // path
  Messages messages = Messages::Pipe;
};

// What one job did. Times are in microseconds.
struct Outcome {
  std::vector<std::string> messages;  // as they were read, with Messages::Packets one a write
  double cpu = 0;                     // user and system, of the process and nothing else
  double wall = 0;                    // from its start to its end
  double report = 0;                  // from the last byte of the last reply to the last "STATE:"
};

enum class Channel : std::uint8_t { Device, Messages, SideChannel };

// The same job with all answers to so many queries ready, for a tool that watches it.
AnsweredProgram answered_job(Job const& job, int queries);

class PlayedJob {
public:
  // Starts the program. Throws std::runtime_error when that cannot be done.
  explicit PlayedJob(Job const& job);

  // The harness' end of a channel, non-blocking; -1 when the program has closed it.
  [[nodiscard]] int descriptor(Channel channel) const;
  // Takes what a channel holds and answers it.
  void hear(Channel channel);

  // Whether the program pauses after the wake-up, or has ended.
  [[nodiscard]] bool is_quiet() const { return asleep_ || has_ended(); }
  [[nodiscard]] bool has_ended() const;
  // What the ended program did and cost. Throws std::runtime_error when it failed.
  Outcome finish();

private:
  using Clock = std::chrono::steady_clock;

  void hear_device(std::string const& bytes);
  void hear_message(std::string const& text);
  void hear_request(std::string const& frame);
  FileDescriptor& end_of(Channel channel);

  Clock::time_point start_;
  Clock::time_point replied_;
  Outcome outcome_{};
  bool asleep_ = false;
  FileDescriptor device_{};
  FileDescriptor messages_{};
  FileDescriptor back_channel_{};
  FileDescriptor side_channel_{};
  pid_t pid_ = -1;
};
