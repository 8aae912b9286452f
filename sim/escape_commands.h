// The escape commands as the printer hears them: a byte stream cut into commands.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace sim {

enum class EscapeCommand { WakeUp, StatusQuery, JobStatusQuery, Unknown };

// The command's name in the simulator's messages, "status query" for example.
char const* name(EscapeCommand command);

struct Heard {
  EscapeCommand command;
  std::uint8_t byte = 0;  // the byte that begins no command, when command is Unknown

  bool operator==(Heard const&) const = default;
};

// Cuts the stream of one connection into commands, wherever the packets are cut.
class EscapeCommandParser {
public:
  // What has become certain with these bytes; the start of a command is kept for the next call.
  std::vector<Heard> feed(std::span<std::uint8_t const> bytes);
  // The stream has ended: the start of a command that is still kept is unknown bytes.
  std::vector<Heard> finish();

private:
  void settle(std::vector<Heard>& heard);

  std::vector<std::uint8_t> pending;  // always the start of a command, and never a whole one
};

}  // namespace sim
