// velmoctl list: every queue of the scheduler, and how it stands.
#include "admin/list_command.h"

#include <nlohmann/json.hpp>
#include <string>

#include "admin/conf_transfer.h"
#include "admin/output.h"
#include "admin/ppd_attach.h"
#include "admin/ppd_transfer.h"
#include "admin/queue.h"
#include "admin/server_settings.h"
#include "admin/verdict.h"

namespace {

struct ListedQueue {
  char const* attached;  // "yes", "no" or "broken"
  std::string problem;   // empty unless broken
};

// A filter that is named well may still be one that the scheduler does not start.
std::string scheduler_problem(Queue const& queue)
{
  if (std::string fault = filter_fault(queue); !fault.empty()) return fault;
  if (!queue.isAttached()) return "the scheduler offers other commands than the PPD file lists";
  return {};
}

ListedQueue look_at(Scheduler const& scheduler, Queue const& queue)
{
  PpdAnswer const ppd = get_ppd(scheduler, queue.name);
  if (!ppd.ppd && ppd.is_missing) return {"no", {}};
  if (!ppd.ppd) return {"broken", "its PPD file cannot be read: " + ppd.error};
  Attachment attachment = read_attachment(*ppd.ppd);
  if (!attachment.is_attached) return {"no", {}};
  if (attachment.problem.empty()) attachment.problem = scheduler_problem(queue);
  if (attachment.problem.empty()) return {"yes", {}};
  return {"broken", std::move(attachment.problem)};
}

bool is_attached(ListedQueue const& listed) { return std::string_view(listed.attached) == "yes"; }

// The scheduler keeps the ribbon that the filter told, whatever becomes of the PPD file.
bool was_asked_once(Queue const& queue) { return queue.ribbon.starts_with("Ribbon Type: "); }

std::string as_line(Queue const& queue, ListedQueue const& listed)
{
  std::string const name = printable(queue.name) + ": ";
  if (!listed.problem.empty()) return name + "broken: " + printable(listed.problem);
  if (is_attached(listed)) return name + "attached";
  return name + "not attached"
         + (was_asked_once(queue)
                ? ", though it was: detached, or a new PPD file dropped what attach put in"
                : "");
}

nlohmann::ordered_json as_json_object(Queue const& queue, ListedQueue const& listed)
{
  nlohmann::ordered_json object{{"queue", queue.name}, {"attached", listed.attached}};
  object["problem"] = nullptr;
  if (!listed.problem.empty()) object["problem"] = listed.problem;
  object["device"] = queue.device;
  return object;
}

void warn_of_settings(Scheduler const& scheduler, std::size_t attached)
{
  std::optional<std::string> const conf = get_conf(scheduler);
  std::optional<ServerSettings> const settings = conf ? read_settings(*conf) : std::nullopt;
  if (!settings) return;
  for (std::string const& advice : settings_advice(*settings, attached)) complain({}, advice);
}

}  // namespace

int run_list(Scheduler const& scheduler, bool as_json)
{
  QueuesAnswer const answer = get_queues(scheduler);
  if (!answer.error.empty()) return complain({}, answer.error), 1;
  nlohmann::ordered_json array = nlohmann::ordered_json::array();
  std::size_t attached = 0;
  for (Queue const& queue : answer.queues) {
    ListedQueue const listed = look_at(scheduler, queue);
    if (is_attached(listed)) ++attached;
    if (as_json)
      array.push_back(as_json_object(queue, listed));
    else
      say(as_line(queue, listed));
  }
  if (!as_json && answer.queues.empty()) say("The scheduler has no queues; lpadmin makes them.");
  // Bytes that are no UTF-8 are shown as such, not taken for the end of the program.
  if (as_json) say(array.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace));
  warn_of_settings(scheduler, attached);
  return 0;
}
