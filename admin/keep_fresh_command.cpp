// velmoctl keep-fresh: stays running and has printers asked after each print.
#include "admin/keep_fresh_command.h"

#include <algorithm>
#include <chrono>

#include "admin/ask_turns.h"
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

}  // namespace

int run_keep_fresh(std::string const& server, KeepFreshOptions const& options)
{
  SignalHold const hold(OpenRequests::End);
  Time now = std::chrono::steady_clock::now();
  EventStream stream = open_stream(server, poll_pause(options), now);
  std::vector<WatchedQueue> queues = watch_all(options, now);
  AskTurns turns{};
  for (;;) {
    Time const next = tend_in_turns(stream, queues, turns, now);
    if (SignalHold::takeSignalWithin(next - std::chrono::steady_clock::now())) break;
    now = std::chrono::steady_clock::now();
  }
  close_stream(stream);
  return 0;
}
