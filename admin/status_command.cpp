// velmoctl status and velmoctl ask.
#include "admin/status_command.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <thread>

#include "admin/ask.h"
#include "admin/output.h"
#include "admin/ppd_transfer.h"

namespace {

constexpr auto WATCH_PAUSE = std::chrono::seconds(2);
constexpr char const* CLEARED_SCREEN = "\x1b[H\x1b[2J";

struct Statuses {
  std::vector<QueueStatus> statuses;
  std::vector<std::string> errors;  // of queues that could not be looked at
};

bool is_in_colour()
{
  char const* const no_color = std::getenv("NO_COLOR");
  return isatty(STDOUT_FILENO) && !(no_color && *no_color);
}

// The PPD file is read only for the texts of reasons that are there.
QueueStatus look_at(Scheduler const& scheduler, Queue const& queue, int low)
{
  std::string ppd;
  if (!queue.reasons.empty()) ppd = get_ppd(scheduler, queue.name).ppd.value_or("");
  return make_queue_status(queue, ppd, low);
}

void add_named(Scheduler const& scheduler, std::string const& name, int low, Statuses& result)
{
  QueueAnswer const answer = get_queue(scheduler, name);
  if (!answer.queue) {
    result.errors.push_back(name + ": " + answer.error);
  } else if (answer.queue->is_class) {
    for (std::string const& member : answer.queue->members)
      add_named(scheduler, member, low, result);
  } else {
    result.statuses.push_back(look_at(scheduler, *answer.queue, low));
  }
}

void add_attached(Scheduler const& scheduler, int low, Statuses& result)
{
  QueuesAnswer const answer = get_queues(scheduler);
  if (!answer.error.empty()) result.errors.push_back(answer.error);
  for (Queue const& queue : answer.queues)
    if (queue.isAttached()) result.statuses.push_back(look_at(scheduler, queue, low));
}

Statuses gather(Scheduler const& scheduler, StatusOptions const& options)
{
  Statuses result;
  for (std::string const& name : options.queues)
    add_named(scheduler, name, options.limits.warning, result);
  if (options.queues.empty()) add_attached(scheduler, options.limits.warning, result);
  std::ranges::stable_sort(result.statuses, {}, &QueueStatus::verdict);
  return result;
}

int show_check(Statuses const& found, CheckLimits const& limits)
{
  Severity worst = Severity::Ok;
  for (QueueStatus const& status : found.statuses) {
    CheckLine const line = status_check(status, limits);
    worst = std::max(worst, line.severity);
    say(line.text);
  }
  for (std::string const& error : found.errors) say("VELMO UNKNOWN - " + without_bars(error));
  if (found.statuses.empty() && found.errors.empty()) say("VELMO UNKNOWN - no queue is attached");
  if (!found.errors.empty() || found.statuses.empty()) worst = std::max(worst, Severity::Unknown);
  return check_exit_status(worst);
}

int show(Statuses const& found, StatusOptions const& options)
{
  if (options.check) return show_check(found, options.limits);
  if (options.json) {
    say(status_json(found.statuses));
  } else {
    std::string text;
    for (QueueStatus const& status : found.statuses) text += status_text(status, is_in_colour());
    if (!text.empty()) say(text.substr(0, text.size() - 1));
    if (found.statuses.empty() && found.errors.empty())
      say("No queue is attached; velmoctl attach QUEUE does that.");
  }
  for (std::string const& error : found.errors) complain({}, error);
  return found.errors.empty() ? 0 : 1;
}

}  // namespace

int run_status(Scheduler const& scheduler, StatusOptions const& options)
{
  for (;;) {
    Statuses const found = gather(scheduler, options);
    if (options.watch && isatty(STDOUT_FILENO)) say(CLEARED_SCREEN);
    int const status = show(found, options);
    if (!options.watch) return status;
    // Nobody looks on any more.
    if (!is_output_written()) return 1;
    std::this_thread::sleep_for(WATCH_PAUSE);
  }
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
