// A queue's status for monitors, after the guidelines for monitoring plugins.
#include <algorithm>

#include "admin/output.h"
#include "admin/status_forms.h"

namespace {

// The level's age if that is above its limit.
std::optional<int> excessive_age(QueueStatus const& status, CheckLimits const& limits)
{
  if (!limits.max_age || !status.age || *status.age <= *limits.max_age) return std::nullopt;
  return status.age;
}

// How grave the verdict is under these limits.
Severity checked(QueueStatus const& status, CheckLimits const& limits)
{
  int const level = status.queue.level.value_or(-1);
  if (level >= 0 && level < limits.critical) return Severity::Critical;
  Severity severity = severity_of(status.verdict);
  // The next job may be the first to find out.
  if (!filter_fault(status.queue).empty()) severity = std::max(severity, Severity::Unknown);
  return excessive_age(status, limits) ? std::max(severity, Severity::Warning) : severity;
}

std::string words(QueueStatus const& status, CheckLimits const& limits)
{
  std::string text = verdict_text(status.verdict);
  if (status.queue.level && *status.queue.level >= 0)
    text += ", ribbon " + std::to_string(*status.queue.level) + " %";
  for (ShownReason const& reason : status.reasons)
    text += ", " + (reason.text.empty() ? reason.keyword : reason.text);
  if (std::optional<int> const age = excessive_age(status, limits))
    text += ", asked " + std::to_string(*age) + " s ago";
  return without_bars(text);
}

std::string figures(QueueStatus const& status, CheckLimits const& limits)
{
  std::string text;
  if (status.queue.level && *status.queue.level >= 0)
    text = "ribbon=" + std::to_string(*status.queue.level) + "%;" + std::to_string(limits.warning)
           + ":;" + std::to_string(limits.critical) + ":;0;100 ";
  if (status.prints)
    text += "prints=" + std::to_string(status.prints->left) + ";;;0;"
            + std::to_string(status.prints->total) + " ";
  if (status.age)
    text += "age=" + std::to_string(*status.age) + "s;"
            + (limits.max_age ? std::to_string(*limits.max_age) : "") + ";;0 ";
  return text + "jobs=" + std::to_string(status.queue.jobs) + ";;;0";
}

}  // namespace

std::string without_bars(std::string_view text)
{
  std::string shown = printable(text);
  std::ranges::replace(shown, '|', '/');
  return shown;
}

CheckLine status_check(QueueStatus const& status, CheckLimits const& limits)
{
  constexpr char const* NAMES[] = {"OK", "WARNING", "UNKNOWN", "CRITICAL"};
  Severity const severity = checked(status, limits);
  std::string const name = without_bars(shown_name(status));
  return {severity, std::string("VELMO ") + NAMES[static_cast<std::size_t>(severity)] + " - " + name
                        + ": " + words(status, limits) + " | " + figures(status, limits)};
}

int check_exit_status(Severity severity)
{
  constexpr int STATUSES[] = {0, 1, 3, 2};
  return STATUSES[static_cast<std::size_t>(severity)];
}
