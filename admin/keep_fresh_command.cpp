// velmoctl keep-fresh: stays running and has printers asked after each print.
#include "admin/keep_fresh_command.h"

#include <algorithm>
#include <chrono>
#include <cstddef>

#include "admin/event_stream.h"
#include "admin/heard_events.h"
#include "admin/signal_hold.h"
#include "admin/watched_queue.h"

namespace {

using std::chrono::duration;
using std::chrono::duration_cast;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr Duration POLL_PAUSE = seconds(2);
constexpr Duration SHORTEST_PAUSE = milliseconds(100);
// The scheduler keeps 100 events, and each ask brings about some. If they were more than that
// between two polls, events would go unseen, and for those every printer would be asked anew.
constexpr std::size_t ASKS_PER_POLL = 10;

// How many printers may be asked until the next poll.
struct AskBudget {
  Time poll;
  std::size_t asks;
};

Duration in_seconds(double number) { return duration_cast<Duration>(duration<double>(number)); }

std::vector<WatchedQueue> watch_all(KeepFreshOptions const& options, Time now)
{
  std::optional<Duration> settle;
  if (options.settle_seconds) settle = in_seconds(*options.settle_seconds);
  FreshRules const rules{settle.value_or(Duration::zero()), in_seconds(options.delay_seconds),
                         in_seconds(options.idle_minutes * 60)};
  std::vector<WatchedQueue> queues;
  for (std::string const& name : options.queues)
    if (!find_queue(queues, name)) queues.push_back(watch(name, settle, rules, now));
  return queues;
}

// Who wants to wait for less than two seconds is not kept waiting by the pause between two polls.
Duration poll_pause(KeepFreshOptions const& options)
{
  if (!options.settle_seconds) return POLL_PAUSE;
  return std::clamp(in_seconds(*options.settle_seconds), SHORTEST_PAUSE, POLL_PAUSE);
}

// Without a subscription no event can go unseen.
AskBudget budget_for(EventStream const& stream, std::size_t queues, AskBudget const& budget)
{
  if (stream.subscription.id == 0) return {stream.last_poll, queues};
  return stream.last_poll == budget.poll ? budget : AskBudget{stream.last_poll, ASKS_PER_POLL};
}

// Does what is due and returns when there is more to do.
Time tend_all(EventStream& stream, std::vector<WatchedQueue>& queues, AskBudget& budget, Time now)
{
  Time next = keep_listening(stream, queues, now);
  if (!stream.scheduler.http) return next;
  budget = budget_for(stream, queues.size(), budget);
  for (WatchedQueue& queue : queues) {
    // A scheduler that hangs would take its time for each.
    if (SignalHold::hasSignalCome()) return now;
    if (budget.asks == 0) break;
    if (tend(stream.scheduler, queue, now)) budget.asks -= 1;
    next = std::min(next, tend_time(queue).value_or(next));
  }
  return next;
}

}  // namespace

int run_keep_fresh(std::string const& server, KeepFreshOptions const& options)
{
  SignalHold const hold(OpenRequests::End);
  Time now = std::chrono::steady_clock::now();
  EventStream stream = open_stream(server, poll_pause(options), now);
  std::vector<WatchedQueue> queues = watch_all(options, now);
  AskBudget budget{};
  for (;;) {
    Time const next = tend_all(stream, queues, budget, now);
    if (SignalHold::takeSignalWithin(next - std::chrono::steady_clock::now())) break;
    now = std::chrono::steady_clock::now();
  }
  close_stream(stream);
  return 0;
}
