// One queue that is kept fresh: what the scheduler tells of it, and its asks.
#include "admin/watched_queue.h"

#include <algorithm>
#include <vector>

#include "admin/command_job.h"
#include "admin/declined.h"
#include "admin/journal.h"
#include "admin/queue.h"
#include "admin/queue_jobs.h"
#include "admin/verdict.h"

namespace {

using std::chrono::seconds;

constexpr Duration SETTLE = seconds(3);
// The backend keeps a command job for 8 seconds, and with it the next print.
constexpr Duration SETTLE_USB = seconds(15);
// What waits for a change is looked at from time to time, should its event get lost.
constexpr auto LOOK_PAUSE = seconds(15);

// Requests take their time, and longer with many queues: what they brought is dated behind them.
Time clock_now() { return std::chrono::steady_clock::now(); }

// Tells why a queue's printer cannot be asked, once.
void tell(WatchedQueue& queue, std::string trouble)
{
  if (trouble == queue.trouble) return;
  if (trouble.empty())
    write_journal(Weight::Notice, queue.name, "its printer can be asked again");
  else
    write_journal(Weight::Warning, queue.name, trouble);
  queue.trouble = std::move(trouble);
}

// Our command jobs; nothing if the scheduler does not tell.
std::optional<std::vector<QueuedJob>> our_asks(Scheduler const& scheduler, std::string const& name)
{
  auto jobs = open_jobs(scheduler, name, Whose::Ours);
  if (jobs) std::erase_if(*jobs, [](QueuedJob const& it) { return !it.is_command; });
  return jobs;
}

// Takes back the jobs that a queue keeps for as long as it is stopped, or has no filter for.
void take_back(Scheduler const& scheduler, WatchedQueue& queue, std::vector<QueuedJob>& asks)
{
  std::erase_if(asks, [&](QueuedJob const& it) {
    if (it.state == IPP_JSTATE_PROCESSING) return false;
    cancel_job(scheduler, queue.name, it.id);
    queue.state = after_pause(queue.state);
    return true;
  });
}

// What the scheduler says of a queue; nothing if it does not tell all.
std::optional<Seen> see(Scheduler const& scheduler, WatchedQueue& queue, Queue const& found)
{
  bool const is_attached = !found.is_class && found.isAttached();
  Seen seen{declined(found).empty(), !is_attached, false, false,
            verdict_of(found, 0) == Verdict::DoesNotAnswer};
  // A class prints without a job of the queue's own.
  seen.is_busy = found.state == IPP_PSTATE_PROCESSING;
  if (found.jobs == 0 || found.is_class) return seen;
  auto const jobs = open_jobs(scheduler, queue.name, Whose::Everybodys);
  auto asks = our_asks(scheduler, queue.name);
  if (!jobs || !asks) return std::nullopt;
  if (found.state == IPP_PSTATE_STOPPED || !is_attached) take_back(scheduler, queue, *asks);
  seen.is_busy = seen.is_busy || std::ranges::any_of(*jobs, &QueuedJob::isActive);
  seen.is_asking = !asks->empty();
  return seen;
}

void look(Scheduler const& scheduler, WatchedQueue& queue)
{
  queue.has_changed = false;
  QueueAnswer const answer = get_queue(scheduler, queue.name);
  // What is not told stays as it was, but for the ask, which waits.
  Seen seen = queue.state.seen;
  seen.is_askable = false;
  if (answer.queue) {
    bool const is_usb = answer.queue->device.starts_with("usb:");
    queue.rules.settle = queue.settle.value_or(is_usb ? SETTLE_USB : SETTLE);
    seen = see(scheduler, queue, *answer.queue).value_or(seen);
  } else {
    seen.is_new = true;
  }
  queue.looked_at = clock_now();
  queue.state = after_look(queue.state, seen, queue.looked_at);
  tell(queue, answer.queue ? declined(*answer.queue) : answer.error);
}

void ask(Scheduler const& scheduler, WatchedQueue& queue)
{
  SentJob const job = send_ask(scheduler, queue.name);
  Time const now = clock_now();
  if (job.id == 0) {
    queue.state = after_refusal(queue.state, queue.rules, now);
    write_journal(Weight::Warning, queue.name, "its printer is not asked: " + job.error);
    return;
  }
  queue.job = job.id;
  queue.state = after_ask(queue.state, queue.rules, now);
  write_journal(Weight::Info, queue.name, "asks its printer, job " + std::to_string(job.id));
}

bool is_due(WatchedQueue const& queue, Time now)
{
  std::optional<Time> const when = ask_time(queue.state, queue.rules);
  return when && *when <= now;
}

bool waits_for_change(WatchedQueue const& queue)
{
  bool const can_be_asked = ask_time(queue.state, queue.rules).has_value();
  return queue.state.seen.is_asking || (queue.state.is_owed && !can_be_asked);
}

}  // namespace

WatchedQueue watch(std::string const& name, std::optional<Duration> settle, FreshRules const& rules,
                   Time now)
{
  return {name, settle, rules, at_start(now), {}, 0, false, 0, true, now};
}

// The last look before an ask is a fresh one.
bool tend(Scheduler const& scheduler, WatchedQueue& queue, bool may_ask, Time now)
{
  bool const is_overdue = waits_for_change(queue) && now >= queue.looked_at + LOOK_PAUSE;
  if (queue.has_changed || is_overdue || (may_ask && is_due(queue, now))) look(scheduler, queue);
  if (!may_ask || !is_due(queue, now)) return false;
  ask(scheduler, queue);
  return true;
}

std::optional<Time> tend_time(WatchedQueue const& queue)
{
  if (queue.has_changed) return queue.looked_at;
  if (waits_for_change(queue)) return queue.looked_at + LOOK_PAUSE;
  return ask_time(queue.state, queue.rules);
}
