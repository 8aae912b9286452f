// velmoctl status and velmoctl ask.
#include "admin/status_command.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <thread>

#include "admin/ask.h"
#include "admin/look.h"
#include "admin/output.h"
#include "admin/servers.h"

namespace {

constexpr auto WATCH_PAUSE = std::chrono::seconds(2);
constexpr char const* CLEARED_SCREEN = "\x1b[H\x1b[2J";

bool is_in_colour()
{
  char const* const no_color = std::getenv("NO_COLOR");
  return isatty(STDOUT_FILENO) && !(no_color && *no_color);
}

int show_check(Statuses const& found, CheckLimits const& limits)
{
  Severity worst = Severity::Ok;
  for (QueueStatus const& status : found.statuses) {
    CheckLine const line = status_check(status, limits);
    worst = std::max(worst, line.severity);
    say(line.text);
  }
  for (LookError const& error : found.errors) say("VELMO UNKNOWN - " + without_bars(error.text));
  if (found.statuses.empty() && found.errors.empty()) say("VELMO UNKNOWN - no queue is attached");
  if (!found.errors.empty() || found.statuses.empty()) worst = std::max(worst, Severity::Unknown);
  return check_exit_status(worst);
}

int show(Statuses const& found, StatusOptions const& options)
{
  if (options.check) return show_check(found, options.limits);
  if (options.json) {
    say(status_json(found.statuses, found.away));
  } else {
    std::string text;
    for (QueueStatus const& status : found.statuses) text += status_text(status, is_in_colour());
    if (!text.empty()) say(text.substr(0, text.size() - 1));
    if (found.statuses.empty() && found.errors.empty())
      say("No queue is attached; velmoctl attach QUEUE does that.");
  }
  for (LookError const& error : found.errors) complain({}, error.text);
  return found.errors.empty() ? 0 : 1;
}

// Shows what a look finds, once or again and again.
int show_looks(std::function<Statuses()> const& look, StatusOptions const& options)
{
  for (;;) {
    Statuses const found = look();
    if (options.watch && isatty(STDOUT_FILENO)) say(CLEARED_SCREEN);
    int const status = show(found, options);
    if (!options.watch) return status;
    // Nobody looks on any more.
    if (!is_output_written()) return 1;
    std::this_thread::sleep_for(WATCH_PAUSE);
  }
}

}  // namespace

int run_status(Scheduler const& scheduler, StatusOptions const& options)
{
  return show_looks([&] { return look(scheduler, options.queues, options.limits.warning); },
                    options);
}

int run_status(std::vector<std::string> const& servers, StatusOptions const& options)
{
  std::vector<AskedServer> asked;
  asked.reserve(servers.size());
  for (std::string const& server : servers)
    asked.push_back({server.empty() ? cupsServer() : server});
  auto const look_at_all = [&] {
    return one_table(ask_servers(asked, options.queues, options.limits.warning));
  };
  return show_looks(look_at_all, options);
}

std::vector<bool> ask_and_show(Scheduler const& scheduler, std::vector<std::string> const& queues,
                               int timeout)
{
  std::vector<AskResult> const results = ask_printers(scheduler, queues, timeout);
  std::vector<bool> are_in;
  for (std::size_t i = 0; i < queues.size(); ++i) {
    if (!results[i].are_values_in) complain(queues[i], results[i].text);
    StatusOptions options;
    options.queues = {queues[i]};
    are_in.push_back(results[i].are_values_in && run_status(scheduler, options) == 0);
  }
  return are_in;
}

int run_ask(Scheduler const& scheduler, AskOptions const& options)
{
  std::vector<bool> const are_in = ask_and_show(scheduler, options.queues, options.timeout);
  return std::ranges::count(are_in, false) == 0 ? 0 : 1;
}
