// The lines of the scheduler's log: how bytes become lines, and what a line of a job holds.
#include "admin/log_line.h"

#include <charconv>

namespace {

constexpr std::string_view LEVELS = "XACEWNIDd";
constexpr std::string_view ANYTHING = "...";

// Takes `what` off the front of the text.
bool take(std::string_view& text, std::string_view what)
{
  if (!text.starts_with(what)) return false;
  text.remove_prefix(what.size());
  return true;
}

// Takes what stands before `end` off the front of the text, and `end` with it.
std::optional<std::string_view> take_until(std::string_view& text, std::string_view end)
{
  std::size_t const at = text.find(end);
  if (at == std::string_view::npos) return std::nullopt;
  std::string_view const taken = text.substr(0, at);
  text.remove_prefix(at + end.size());
  return taken;
}

}  // namespace

std::optional<LogLine> parse_log_line(std::string_view line)
{
  // A log that went through another system has other line ends.
  if (line.ends_with('\r')) line.remove_suffix(1);
  if (line.empty() || LEVELS.find(line.front()) == std::string_view::npos) return std::nullopt;
  char const level = line.front();
  line.remove_prefix(1);
  if (!take(line, " [")) return std::nullopt;
  std::optional<std::string_view> const time = take_until(line, "] ");
  if (!time || !take(line, "[Job ")) return std::nullopt;

  int job = 0;
  auto const [end, error] = std::from_chars(line.data(), line.data() + line.size(), job);
  line.remove_prefix(static_cast<std::size_t>(end - line.data()));
  if (error != std::errc() || job < 1 || !take(line, "] ")) return std::nullopt;
  return LogLine{level, *time, job, line};
}

bool is_like(std::string_view text, std::string_view pattern)
{
  std::size_t at = pattern.find(ANYTHING);
  if (at == std::string_view::npos) return text == pattern;
  if (!take(text, pattern.substr(0, at))) return false;
  pattern.remove_prefix(at + ANYTHING.size());
  while ((at = pattern.find(ANYTHING)) != std::string_view::npos) {
    if (!take_until(text, pattern.substr(0, at))) return false;
    pattern.remove_prefix(at + ANYTHING.size());
  }
  return text.ends_with(pattern);
}
