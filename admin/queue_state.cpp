// What an upload of a PPD file does to a queue's state, and what is put back.
#include "admin/queue_state.h"

#include <algorithm>
#include <iterator>

namespace {

bool has(std::vector<std::string> const& reasons, std::string_view reason)
{
  return std::ranges::find(reasons, reason) != reasons.end();
}

// Reasons that the scheduler gives for its own faults, and renews by itself.
bool is_filter_problem(std::string_view reason)
{
  return reason.starts_with("cups-")
         && (reason.ends_with("-warning") || reason.ends_with("-error"));
}

bool is_put_back(std::string_view reason)
{
  return reason == "paused" || reason == "hold-new-jobs";
}

}  // namespace

std::string restore_state(Scheduler const& scheduler, Queue const& before, Queue const& now)
{
  auto const is_forgotten = [&](char const* reason) {
    return has(before.reasons, reason) && !has(now.reasons, reason);
  };
  std::string error;
  if (is_forgotten("hold-new-jobs"))
    error = send(scheduler, make_request(IPP_OP_HOLD_NEW_JOBS, before.name), "/admin/").error;
  if (is_forgotten("paused")) {
    Ipp request = make_request(IPP_OP_PAUSE_PRINTER, before.name);
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_TEXT, "printer-state-message", nullptr,
                 before.state_message.c_str());
    std::string paused = send(scheduler, std::move(request), "/admin/").error;
    if (error.empty()) error = std::move(paused);
  }
  return error.empty() ? error : "its pause could not be marked again: " + error;
}

std::string new_filter_problem(Queue const& before, Queue const& now)
{
  for (std::string const& reason : now.reasons)
    if (is_filter_problem(reason) && !has(before.reasons, reason))
      return "the scheduler cannot use a filter of the queue (" + reason
             + "); install the package or mend the filter's owner and rights";
  return {};
}

std::vector<std::string> lost_reasons(Queue const& before, Queue const& now)
{
  std::vector<std::string> lost;
  std::ranges::copy_if(before.reasons, std::back_inserter(lost), [&](std::string const& it) {
    return !is_put_back(it) && !is_filter_problem(it) && !has(now.reasons, it);
  });
  return lost;
}
