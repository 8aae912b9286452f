// What the queues of one scheduler come to.
#include "admin/look.h"

#include <algorithm>

#include "admin/ppd_transfer.h"

namespace {

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
    result.errors.push_back({name + ": " + answer.error, answer.is_missing ? name : ""});
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
  if (!answer.error.empty()) result.errors.push_back({answer.error, {}});
  for (Queue const& queue : answer.queues)
    if (queue.isAttached()) result.statuses.push_back(look_at(scheduler, queue, low));
}

}  // namespace

Statuses look(Scheduler const& scheduler, std::vector<std::string> const& queues, int low)
{
  Statuses result;
  for (std::string const& name : queues) add_named(scheduler, name, low, result);
  if (queues.empty()) add_attached(scheduler, low, result);
  std::ranges::stable_sort(result.statuses, {}, &QueueStatus::verdict);
  return result;
}
