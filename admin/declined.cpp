// Why a queue's printer cannot be asked.
#include "admin/declined.h"

#include <algorithm>

std::string declined(Queue const& queue)
{
  std::string const message = queue.state_message.empty() ? "" : " (" + queue.state_message + ")";
  if (queue.is_class) return "is a class; name the queues in it";
  if (!queue.isAttached())
    return "is not attached, so nothing asks its printer; see velmoctl attach";
  if (queue.state == IPP_PSTATE_STOPPED)
    return "is stopped" + message + "; cupsenable it, then velmoctl ask";
  if (std::ranges::find(queue.reasons, "hold-new-jobs") != queue.reasons.end())
    return "holds its jobs" + message + "; cupsenable --release it, then velmoctl ask";
  if (!queue.accepting) return "rejects jobs" + message + "; cupsaccept lets it take them";
  return {};
}
