// When a queue's printer is to be asked again: the rules, with the clock as an argument.
#include "admin/freshness.h"

#include <algorithm>
#include <iterator>

namespace {

using std::chrono::minutes;
using std::chrono::seconds;

// Whatever happens, two asks are so far apart, but for those of a printer that did not answer.
constexpr auto ASK_PAUSE = seconds(15);
// A printer that is being switched on answers soon; one that is away for the night need not be
// tried often.
constexpr Duration RETRIES[] = {seconds(5), seconds(15), seconds(60), seconds(300)};
// A queue that is never quiet is asked between two prints.
constexpr int STEADY_PRINTS = 25;
constexpr auto STEADY_TIME = minutes(10);

std::optional<Time> earlier(std::optional<Time> one, std::optional<Time> other)
{
  if (one && other) return std::min(*one, *other);
  return one ? one : other;
}

// When the queue has been quiet for long enough.
std::optional<Time> settled(Freshness const& state, FreshRules const& rules)
{
  if (!state.quiet_since) return std::nullopt;
  return *state.quiet_since + rules.settle;
}

// When steady printing is interrupted, quiet or not.
std::optional<Time> steady(Freshness const& state)
{
  if (!state.last_print) return std::nullopt;
  Time const by_time = state.owed_since + STEADY_TIME;
  return state.prints < STEADY_PRINTS ? by_time : std::min(by_time, *state.last_print);
}

std::optional<Time> owed_time(Freshness const& state, FreshRules const& rules)
{
  if (!state.is_owed) return std::nullopt;
  std::optional<Time> quiet = settled(state, rules);
  if (quiet && state.last_print) quiet = std::max(*quiet, *state.last_print + rules.delay);
  return earlier(quiet, steady(state));
}

std::optional<Time> idle_time(Freshness const& state, FreshRules const& rules)
{
  std::optional<Time> const quiet = settled(state, rules);
  if (!quiet || rules.idle == Duration::zero()) return std::nullopt;
  return std::max(*quiet, state.idle_since + rules.idle);
}

std::optional<Time> retry_time(Freshness const& state, FreshRules const& rules)
{
  std::optional<Time> const quiet = settled(state, rules);
  if (!quiet || !state.retry) return std::nullopt;
  return std::max(*quiet, *state.retry);
}

Freshness owe(Freshness state, Time when)
{
  if (!state.is_owed) state.owed_since = when;
  state.is_owed = true;
  return state;
}

// An ask has ended; one that was not answered is repeated after a while.
Freshness after_end(Freshness state, bool is_answered, Time now)
{
  if (is_answered) state.retries = 0;
  if (is_answered || state.retries == std::size(RETRIES)) return state;
  state.retry = now + RETRIES[state.retries];
  state.retries += 1;
  return state;
}

}  // namespace

Freshness at_start(Time now)
{
  Freshness state{};
  state.idle_since = now;
  return owe(state, now);
}

Freshness after_print(Freshness state, Time ended)
{
  state = owe(state, ended);
  state.last_print = ended;
  state.idle_since = ended;
  state.prints += 1;
  state.retry.reset();
  state.retries = 0;
  return after_event(state, ended);
}

Freshness after_event(Freshness state, Time when)
{
  state.last_event = when;
  if (state.quiet_since) state.quiet_since = std::max(*state.quiet_since, when);
  return state;
}

Freshness after_look(Freshness state, Seen const& seen, Time now)
{
  bool const has_ended = state.seen.is_asking && !seen.is_asking;
  state.seen = seen;
  if (seen.is_busy) state.quiet_since.reset();
  if (!seen.is_busy && !state.quiet_since) state.quiet_since = state.last_event.value_or(now);
  state.last_event.reset();
  if (seen.is_new) state = owe(state, now);
  return has_ended ? after_end(state, !seen.does_not_answer, now) : state;
}

// A print that has just ended may not be counted yet.
Freshness after_ask(Freshness state, FreshRules const& rules, Time now)
{
  state.is_owed = state.last_print && now < *state.last_print + rules.delay;
  state.owed_since = now;
  state.prints = 0;
  state.idle_since = now;
  state.last_ask = now;
  state.retry.reset();
  state.seen.is_asking = true;
  return state;
}

Freshness after_refusal(Freshness state, FreshRules const& rules, Time now)
{
  state = after_ask(state, rules, now);
  state.seen.is_asking = false;
  return after_end(state, false, now);
}

Freshness after_pause(Freshness state)
{
  state.seen.is_asking = false;
  return owe(state, state.idle_since);
}

std::optional<Time> ask_time(Freshness const& state, FreshRules const& rules)
{
  if (!state.seen.is_askable || state.seen.is_asking) return std::nullopt;
  std::optional<Time> when = earlier(owed_time(state, rules), idle_time(state, rules));
  if (when && state.last_ask) when = std::max(*when, *state.last_ask + ASK_PAUSE);
  return earlier(when, retry_time(state, rules));
}
