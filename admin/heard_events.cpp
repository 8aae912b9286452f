// What the scheduler's events mean for the queues that are kept fresh.
#include "admin/heard_events.h"

#include <strings.h>

#include <algorithm>

#include "admin/queue.h"
#include "admin/queue_jobs.h"

namespace {

// The level's time, which tells of a job that the scheduler has forgotten; 0 if it tells nothing,
// as that of a level from before the scheduler's clock was set back.
int level_time(Scheduler const& scheduler, std::string const& name)
{
  QueueAnswer const answer = get_queue(scheduler, name);
  if (!answer.queue || answer.queue->level_time > answer.queue->up_time) return 0;
  return answer.queue->level_time;
}

bool may_be_print(Scheduler const& scheduler, WatchedQueue const& queue, Event const& event)
{
  if (event.job == queue.job) return false;
  if (auto const job = ended_job(scheduler, queue.name, event.job)) return was_print(*job);
  return was_print(JobTraces{event.job_state, queue.is_printing, queue.begun,
                             level_time(scheduler, queue.name)});
}

void hear_of_state(WatchedQueue& queue, Event const& event, Time when)
{
  bool const is_printing = event.queue_state == IPP_PSTATE_PROCESSING;
  if (is_printing && !queue.is_printing) queue.begun = event.time;
  queue.is_printing = is_printing;
  if (is_printing) queue.state = after_event(queue.state, when);
}

}  // namespace

WatchedQueue* find_queue(std::vector<WatchedQueue>& queues, std::string const& name)
{
  auto const found = std::ranges::find_if(queues, [&](WatchedQueue const& it) {
    return strcasecmp(it.name.c_str(), name.c_str()) == 0;
  });
  return found == queues.end() ? nullptr : &*found;
}

void hear(Scheduler const& scheduler, WatchedQueue& queue, Event const& event, Time when)
{
  queue.has_changed = true;
  if (!event.is_job_end) return hear_of_state(queue, event, when);
  queue.state = after_event(queue.state, when);
  if (may_be_print(scheduler, queue, event)) queue.state = after_print(queue.state, when);
}

void lose_track(WatchedQueue& queue)
{
  queue.has_changed = true;
  queue.is_printing = false;
  queue.begun = 0;
}
