// What the lines of a job are: the filter's or another's, an end, a report.
#include "admin/job_lines.h"

#include <algorithm>
#include <array>

#include "admin/log_line.h"
#include "admin/story_text.h"

namespace {

constexpr std::string_view ATTRIBUTE = "ATTR: marker-";

constexpr auto OF_FILTER = std::to_array<std::string_view>({
    "commandtovelmo (application/vnd.cups-command to ...",
    "Started filter .../commandtovelmo (PID ...",
    "Unable to start filter \"commandtovelmo\" - ...",
    "PID ... (.../commandtovelmo) ...",
    "wr_esc_wakeup() ...",
    "get_printer_info() ...",
    "get_printer_info_retry() ...",
    "get_job_status() ...",
    "====> command=[...] linenum=...",
    "printer_info=[...]",
    "#retry_status=[wake_up=...",
    "STATE: +com.velmo-error...",
    "STATE: -com.velmo-error...",
});

constexpr auto ENDS = std::to_array<std::string_view>({
    "Job completed...",
    "Job canceled...",
    "Job aborted...",
    "Job stopped...",
    "Job held...",
    "Stopping job ...",
    "Aborting job ...",
    "Printer stopped due to ...",
});

template <std::size_t COUNT>
bool is_one_of(std::string_view text, std::array<std::string_view, COUNT> const& patterns)
{
  return std::ranges::any_of(patterns, [&](auto pattern) { return is_like(text, pattern); });
}

// The scheduler puts a backslash in front of a program's quotes.
std::string unquoted(std::string_view text)
{
  std::string plain(text);
  std::erase(plain, '\\');
  if (plain.starts_with('"')) plain.erase(0, 1);
  if (plain.ends_with('"')) plain.pop_back();
  return plain;
}

std::string level_meaning(std::string_view level)
{
  if (level == "-2") return "-2, not available: there was no usable answer";
  if (level == "-1") return "-1, not known: a count is not known, or there is no ribbon";
  return shown(level) + " %";
}

}  // namespace

bool is_of_filter(std::string_view text) { return is_one_of(text, OF_FILTER); }

bool is_end_of_job(std::string_view text) { return is_one_of(text, ENDS); }

std::string marker_text(std::string_view text)
{
  if (!text.starts_with(ATTRIBUTE)) return {};
  text.remove_prefix(ATTRIBUTE.size());
  std::size_t const at = std::min(text.find('='), text.size());
  std::string_view const name = text.substr(0, at);
  std::string const value = unquoted(text.substr(std::min(at + 1, text.size())));
  if (name == "levels") return "level " + level_meaning(value);
  // A blank stands for nothing.
  return (name == "message" || name == "names") && value != " " ? shown(value) : "";
}
