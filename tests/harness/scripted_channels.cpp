// The parts of the text, each brought when the filter waits and nothing is there.
#include "tests/harness/scripted_channels.h"

#include <unistd.h>

#include <array>

namespace {

constexpr int BACK_CHANNEL = 3;
constexpr int SIDE_CHANNEL = 4;

bool is_marker(std::string_view text)
{
  return text.size() >= 3 && text[0] == '=' && text[2] == '='
         && std::string_view("SBsb").find(text[1]) != std::string_view::npos;
}

std::size_t find_marker(std::string_view text, std::size_t from)
{
  while (from < text.size() && !is_marker(text.substr(from))) ++from;
  return from;
}

// Requests are of no interest here, but must not fill the channel.
void take_requests(FileDescriptor const& end)
{
  std::array<char, 512> requests;
  while (recv(end.get(), requests.data(), requests.size(), MSG_DONTWAIT) > 0) continue;
}

}  // namespace

ScriptedChannels::ScriptedChannels(std::string_view text)
{
  std::size_t at = find_marker(text, 0);
  commands = text.substr(0, at);
  while (at < text.size()) {
    std::size_t const next = find_marker(text, at + 3);
    char const kind = text[at + 1];
    Parts& parts = kind == 'S' || kind == 's' ? side_parts_ : back_parts_;
    parts.push_back({std::string(text.substr(at + 3, next - at - 3)), kind == 's' || kind == 'b'});
    at = next;
  }
}

void ScriptedChannels::begin(Wait wait)
{
  bool const back = wait == Wait::ForReply;
  FileDescriptor& end = back ? channels_.back_channel : channels_.side_channel;
  Parts& parts = back ? back_parts_ : side_parts_;
  if (!back && end.get() >= 0) take_requests(end);
  if (wait == Wait::ForRoom || parts.empty() || end.get() < 0) return;
  if (has_come(back ? BACK_CHANNEL : SIDE_CHANNEL)) return;
  if (parts.front().ends)
    end.reset();
  else
      // What does not fit is lost, as it is with a backend that gives up.
      [[maybe_unused]]
    auto const written = write(end.get(), parts.front().bytes.data(), parts.front().bytes.size());
  parts.pop_front();
}
