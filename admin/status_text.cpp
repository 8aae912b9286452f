// A queue's status for people.
#include <algorithm>

#include "admin/output.h"
#include "admin/status_forms.h"

namespace {

constexpr int BAR_WIDTH = 30;

std::string coloured(std::string const& word, Severity severity)
{
  constexpr char const* COLOURS[] = {"\x1b[32m", "\x1b[33m", "\x1b[33m", "\x1b[31m"};
  return COLOURS[static_cast<std::size_t>(severity)] + word + "\x1b[0m";
}

std::string gauge(int level)
{
  int const filled = std::min(level, 100) * BAR_WIDTH / 100;
  std::string text = "[" + std::string(static_cast<std::size_t>(filled), '#')
                     + std::string(static_cast<std::size_t>(BAR_WIDTH - filled), '.') + "]  ";
  return text + std::to_string(level) + " %";
}

std::string ribbon_line(QueueStatus const& status, int level)
{
  std::string text = level >= 0 ? gauge(level) : "level not known";
  if (status.prints)
    text += "   " + std::to_string(status.prints->left) + " of "
            + std::to_string(status.prints->total) + " prints";
  if (!status.ribbon.empty()) text += (status.prints ? ", " : "   ") + printable(status.ribbon);
  return text;
}

std::string age_text(int seconds)
{
  if (seconds < 60) return std::to_string(seconds) + " s ago";
  if (seconds < 60 * 60) return std::to_string(seconds / 60) + " min ago";
  if (seconds < 48 * 60 * 60) return std::to_string(seconds / (60 * 60)) + " h ago";
  return std::to_string(seconds / (24 * 60 * 60)) + " days ago";
}

std::string reason_line(ShownReason const& reason)
{
  if (reason.text.empty() && reason.codes.empty()) return printable(reason.keyword);
  std::string codes;
  for (std::string const& code : reason.codes) codes += (codes.empty() ? "" : " or ") + code;
  if (!codes.empty()) codes = "code " + codes;
  if (reason.text.empty()) return printable(reason.keyword) + "  (" + codes + ")";
  return printable(reason.text) + "  (" + printable(reason.keyword)
         + (codes.empty() ? "" : ", " + codes) + ")";
}

std::string line(char const* title, std::string const& text)
{
  std::string const name = title;
  return "  " + name + std::string(9 - name.size(), ' ') + text + "\n";
}

}  // namespace

std::string status_text(QueueStatus const& status, bool in_colour)
{
  Queue const& queue = status.queue;
  std::string const word = verdict_text(status.verdict);
  std::string text = printable(shown_name(status)) + "  "
                     + (in_colour ? coloured(word, severity_of(status.verdict)) : word) + "\n";
  if (queue.level) text += line("Ribbon", ribbon_line(status, *queue.level));
  text += line("Asked", status.age ? age_text(*status.age) : "never");
  for (ShownReason const& reason : status.reasons) text += line("Reason", reason_line(reason));
  if (!queue.state_message.empty()) text += line("Message", printable(queue.state_message));
  if (!queue.accepting) text += line("Jobs", "are rejected");
  if (queue.jobs > 0) text += line("Jobs", std::to_string(queue.jobs) + " waiting or printing");
  return text;
}
