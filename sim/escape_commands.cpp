// The escape commands as the printer hears them: a byte stream cut into commands.
#include "sim/escape_commands.h"

#include <algorithm>
#include <string_view>

namespace sim {

namespace {

struct Row {
  EscapeCommand command;
  char const* name;
  std::string_view bytes;
};

// No command is the start of another, so a whole command is certain at its last byte.
constexpr Row COMMANDS[] = {
    {EscapeCommand::WakeUp, "wake-up", {"\033EWU", 4}},
    {EscapeCommand::StatusQuery, "status query", {"\033V21", 4}},
    {EscapeCommand::JobStatusQuery, "job status query", {"\033V10\0\0", 6}},
};

// The first command that starts with these bytes, or null.
Row const* command_starting_with(std::vector<std::uint8_t> const& bytes)
{
  auto const* const row = std::ranges::find_if(COMMANDS, [&](Row const& candidate) {
    return bytes.size() <= candidate.bytes.size()
           && std::equal(bytes.begin(), bytes.end(), candidate.bytes.begin(),
                         [](std::uint8_t heard, char expected) {
                           return heard == static_cast<std::uint8_t>(expected);
                         });
  });
  return row == std::end(COMMANDS) ? nullptr : row;
}

}  // namespace

char const* name(EscapeCommand command)
{
  auto const* const row = std::ranges::find(COMMANDS, command, &Row::command);
  return row == std::end(COMMANDS) ? "unknown byte" : row->name;
}

std::vector<Heard> EscapeCommandParser::feed(std::span<std::uint8_t const> bytes)
{
  std::vector<Heard> heard;
  for (auto const byte : bytes) {
    pending.push_back(byte);
    settle(heard);
  }
  return heard;
}

std::vector<Heard> EscapeCommandParser::finish()
{
  std::vector<Heard> heard;
  for (auto const byte : pending) heard.push_back({EscapeCommand::Unknown, byte});
  pending.clear();
  return heard;
}

// Moves out of `pending` what can be no start of a command any more. Only the first byte is
// given up at a time: the command may begin at any of the bytes after it.
void EscapeCommandParser::settle(std::vector<Heard>& heard)
{
  while (!pending.empty()) {
    auto const* const row = command_starting_with(pending);
    if (row == nullptr) {
      heard.push_back({EscapeCommand::Unknown, pending.front()});
      pending.erase(pending.begin());
    } else if (row->bytes.size() == pending.size()) {
      heard.push_back({row->command});
      pending.clear();
    } else {
      return;
    }
  }
}

}  // namespace sim
