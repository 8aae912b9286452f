// A whole log in words, job by job, in memory that does not grow with it.
#include "admin/log_explainer.h"

#include <algorithm>

std::string LogExplainer::add(std::string_view piece)
{
  std::string told;
  lines.add(piece, [&](std::string_view line) { addLine(line, told); });
  return told;
}

std::string LogExplainer::finish()
{
  std::string told;
  lines.finish([&](std::string_view line) { addLine(line, told); });
  for (Held& held : jobs) tell(held, told);
  return told;
}

void LogExplainer::addLine(std::string_view line, std::string& told)
{
  std::optional<LogLine> const read = parse_log_line(line);
  if (!read || (only_job && read->job != *only_job)) return;
  ++line_number;
  auto const held = find(*read, told);
  held->last_line = line_number;
  held->story.add(*read);
  if (!held->story.isFull()) return;
  tell(*held, told);
  jobs.erase(held);
}

// The job of the line, made if it is new; another one has to make room for it.
LogExplainer::Jobs::iterator LogExplainer::find(LogLine const& line, std::string& told)
{
  auto const held = std::ranges::find(
      jobs, line.job, [](Held const& candidate) { return candidate.story.getJob(); });
  // A scheduler that was set up anew begins its numbers anew.
  bool const is_another =
      held != jobs.end() && held->story.isQueued() && line.text.starts_with("Queued on ");
  if (held != jobs.end() && !is_another) return held;
  if (is_another || jobs.size() == MOST_JOBS) {
    auto const leaving = is_another ? held : std::ranges::min_element(jobs, {}, &Held::last_line);
    tell(*leaving, told);
    jobs.erase(leaving);
  }
  jobs.push_back({JobStory(line), line_number});
  return std::prev(jobs.end());
}

void LogExplainer::tell(Held& held, std::string& told)
{
  if (!held.story.isOfFilter()) return;
  told += (has_told ? "\n" : "") + held.story.text();
  has_told = true;
}
