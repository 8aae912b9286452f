// The way by which queues hear of the scheduler's events, whatever happens to the scheduler.
#include "admin/event_stream.h"

#include <algorithm>

#include "admin/heard_events.h"
#include "admin/journal.h"
#include "admin/signal_hold.h"

namespace {

using std::chrono::minutes;
using std::chrono::seconds;

// The scheduler has as many subscriptions as it takes.
constexpr auto SUBSCRIBE_PAUSE = seconds(15);
// Half of the lease.
constexpr auto RENEWAL_PAUSE = minutes(30);

void tell(EventStream& stream, std::string trouble)
{
  if (trouble == stream.trouble) return;
  if (trouble.empty()) write_journal(Weight::Notice, {}, "hears the scheduler again");
  if (!trouble.empty()) write_journal(Weight::Warning, {}, trouble);
  stream.trouble = std::move(trouble);
}

// The connection is made anew, because the old one may lead to a scheduler that has ended. A
// subscription outlives its scheduler, and would take a place in its list for the rest of the hour.
void listen(EventStream& stream, std::vector<WatchedQueue>& queues, Time now)
{
  if (stream.subscription.id != 0) stream.lost = stream.subscription;
  stream.subscription = {};
  stream.next_try = now + stream.pause;
  stream.scheduler = connect(stream.server);
  if (!stream.scheduler.http)
    return tell(stream, "the scheduler at " + stream.scheduler.server
                            + " cannot be reached; it is waited for");
  if (stream.lost.id != 0) unsubscribe(stream.scheduler, stream.lost);
  stream.lost = {};
  SubscribeResult const result = subscribe(stream.scheduler);
  for (WatchedQueue& queue : queues) {
    lose_track(queue);
    if (stream.has_begun && result.error.empty()) queue.state = after_print(queue.state, now);
  }
  stream.has_begun = true;
  if (!result.error.empty()) {
    stream.next_try = now + SUBSCRIBE_PAUSE;
    return tell(stream, "prints are not noticed: " + result.error);
  }
  stream.subscription = result.subscription;
  stream.last_poll = now;
  stream.next_poll = now + stream.pause;
  stream.next_renewal = now + RENEWAL_PAUSE;
  tell(stream, {});
}

// When an event came about, by our clock. The scheduler's has whole seconds, of which one may
// be a whole one more; it may jump as well.
Time time_of(EventStream const& stream, Event const& event, int scheduler_now, Time now)
{
  int const age = std::max(0, scheduler_now - event.time - 1);
  return std::max(now - seconds(age), stream.last_poll);
}

void let_hear(EventStream& stream, std::vector<WatchedQueue>& queues, News const& news, Time now)
{
  for (Event const& event : news.events) {
    if (SignalHold::hasSignalCome()) return;
    if (WatchedQueue* const queue = find_queue(queues, event.queue))
      hear(stream.scheduler, *queue, event, time_of(stream, event, news.now, now));
  }
}

void poll(EventStream& stream, std::vector<WatchedQueue>& queues, Time now)
{
  News const news = fetch_news(stream.scheduler, stream.subscription);
  if (news.is_gap || !news.error.empty()) {
    write_journal(Weight::Notice, {}, "events may have gone unseen, so every printer is asked");
    return listen(stream, queues, now);
  }
  let_hear(stream, queues, news, now);
  if (!news.events.empty()) stream.subscription.last = news.events.back().number;
  stream.last_poll = now;
  stream.next_poll = now + stream.pause;
  if (now < stream.next_renewal) return;
  renew(stream.scheduler, stream.subscription);
  stream.next_renewal = now + RENEWAL_PAUSE;
}

}  // namespace

EventStream open_stream(std::string const& server, Duration pause, Time now)
{
  return {server, pause, {}, {}, {}, false, now, now, now, now, {}};
}

Time keep_listening(EventStream& stream, std::vector<WatchedQueue>& queues, Time now)
{
  if (stream.subscription.id != 0 && now >= stream.next_poll) poll(stream, queues, now);
  if (stream.subscription.id == 0 && now >= stream.next_try) listen(stream, queues, now);
  return stream.subscription.id != 0 ? stream.next_poll : stream.next_try;
}

void close_stream(EventStream& stream)
{
  if (!stream.scheduler.http || stream.subscription.id == 0) return;
  unsubscribe(stream.scheduler, stream.subscription);
}
