// Many queues are asked in turns, so that what their asks bring about can be heard.
#include "admin/ask_turns.h"

#include <algorithm>
#include <chrono>

#include "admin/signal_hold.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

// The scheduler keeps 100 events, and an ask brings about ten at most. If all of them were more
// than that between two polls, events would go unseen, and for those every printer would be asked
// anew.
constexpr std::size_t ASKS_ON_THEIR_WAY = 8;
// A printer that does not answer has had most of its ten by then, and keeps nobody waiting.
constexpr Duration LATE = seconds(15);
// While printers wait for their turn, it is looked sooner whether others have answered.
constexpr Duration TURN_PAUSE = milliseconds(500);

bool is_on_its_way(Freshness const& state, Time now)
{
  return state.seen.is_asking && state.last_ask && now < *state.last_ask + LATE;
}

// Without a subscription no event can go unseen.
std::size_t asks_until_poll(EventStream const& stream, std::vector<WatchedQueue> const& queues,
                            Time now)
{
  if (stream.subscription.id == 0) return queues.size();
  auto const on_their_way = static_cast<std::size_t>(std::ranges::count_if(
      queues, [now](WatchedQueue const& it) { return is_on_its_way(it.state, now); }));
  return ASKS_ON_THEIR_WAY - std::min(ASKS_ON_THEIR_WAY, on_their_way);
}

// Tends them all, beginning where the last ask ended: else the last queues would never be asked
// while those before them print. Returns when there is more to do.
Time tend_all(Scheduler const& scheduler, std::vector<WatchedQueue>& queues, AskTurns& turns,
              Time now, Time next)
{
  std::size_t const first = turns.first;
  for (std::size_t i = 0; i < queues.size(); ++i) {
    // A scheduler that hangs would take its time for each.
    if (SignalHold::hasSignalCome()) return now;
    std::size_t const number = (first + i) % queues.size();
    if (tend(scheduler, queues[number], turns.asks > 0, now)) {
      turns.asks -= 1;
      turns.first = number + 1;
    }
    next = std::min(next, tend_time(queues[number]).value_or(next));
  }
  return next;
}

}  // namespace

Time tend_in_turns(EventStream& stream, std::vector<WatchedQueue>& queues, AskTurns& turns,
                   Time now)
{
  Time next = keep_listening(stream, queues, now);
  if (!stream.scheduler.http) return next;
  if (stream.last_poll != turns.poll || stream.subscription.id == 0)
    turns = {stream.last_poll, asks_until_poll(stream, queues, now), turns.first};
  next = tend_all(stream.scheduler, queues, turns, now, next);
  if (turns.asks > 0) return next;
  stream.next_poll = std::min(stream.next_poll, now + TURN_PAUSE);
  return std::max(next, stream.next_poll);
}
