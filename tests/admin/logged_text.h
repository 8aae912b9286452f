// What the filter says as the scheduler logs it.
#pragma once

#include <string>

// How every line of the log begins.
inline std::string log_head(int job, char level = 'D')
{
  return std::string(1, level) + " [22/Nov/2026:01:33:47 +0000] [Job " + std::to_string(job) + "] ";
}

// Lines such as "DEBUG: TEXT" in the log: without the DEBUG or ERROR, and with a backslash in front
// of each quote.
inline std::string logged(int job, std::string const& messages)
{
  std::string text;
  for (std::size_t at = 0; at < messages.size();) {
    std::size_t const end = messages.find('\n', at);
    std::string line = messages.substr(at, end - at);
    bool const is_error = line.starts_with("ERROR: ");
    if (is_error || line.starts_with("DEBUG: ")) line.erase(0, 7);
    text += log_head(job, is_error ? 'E' : 'D');
    for (char const ch : line) text += ch == '"' ? "\\\"" : std::string(1, ch);
    text += '\n';
    at = end + 1;
  }
  return text;
}

inline std::string logged_begin(int job)
{
  return log_head(job, 'I') + "Queued on \"photo\" by \"ann\".\n";
}

inline std::string logged_end(int job) { return log_head(job, 'I') + "Job completed.\n"; }
