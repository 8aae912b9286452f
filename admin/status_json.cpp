// Queues' status for programs.
#include <nlohmann/json.hpp>

#include "admin/status_forms.h"

namespace {

using Json = nlohmann::ordered_json;

Json number(std::optional<int> const& value) { return value ? Json(*value) : Json(nullptr); }

Json text(std::string const& value) { return value.empty() ? Json(nullptr) : Json(value); }

char const* state_name(ipp_pstate_t state)
{
  if (state == IPP_PSTATE_STOPPED) return "stopped";
  return state == IPP_PSTATE_PROCESSING ? "printing" : "idle";
}

Json reason_object(ShownReason const& reason)
{
  return {{"keyword", reason.keyword}, {"text", text(reason.text)}, {"codes", reason.codes}};
}

Json status_object(QueueStatus const& status)
{
  Queue const& queue = status.queue;
  Json object;
  object["queue"] = queue.name;
  if (!status.server.empty()) object["server"] = status.server;
  object["verdict"] = verdict_text(status.verdict, '-');
  object["state"] = state_name(queue.state);
  object["state_message"] = queue.state_message;
  object["accepting"] = queue.accepting;
  object["jobs"] = queue.jobs;
  // Below zero the level says why there is none.
  object["level"] = number(queue.level >= 0 ? queue.level : std::nullopt);
  object["level_raw"] = number(queue.level);
  object["ribbon"] = text(status.ribbon);
  object["prints_left"] = status.prints ? Json(status.prints->left) : Json(nullptr);
  object["prints_total"] = status.prints ? Json(status.prints->total) : Json(nullptr);
  object["age_seconds"] = number(status.age);
  object["reasons"] = Json::array();
  for (ShownReason const& reason : status.reasons)
    object["reasons"].push_back(reason_object(reason));
  object["attached"] = queue.isAttached();
  object["device"] = queue.device;
  return object;
}

Json unreachable_object(Json const& name, std::string const& server)
{
  QueueStatus status{};
  status.server = server;
  Json object = status_object(status);
  for (auto const& [member, value] : object.items())
    if (!value.is_array() && member != "server") value = nullptr;
  object["queue"] = name;
  object["verdict"] = "scheduler-not-reachable";
  return object;
}

// Bytes that are no UTF-8 are shown as such, not taken for the end of the program.
std::string dump(Json const& array)
{
  return array.dump(2, ' ', false, Json::error_handler_t::replace);
}

}  // namespace

std::string status_json(std::vector<QueueStatus> const& statuses,
                        std::vector<std::string> const& away)
{
  Json array = Json::array();
  for (QueueStatus const& status : statuses) array.push_back(status_object(status));
  for (std::string const& server : away) array.push_back(unreachable_object(nullptr, server));
  return dump(array);
}

std::string unreachable_json(std::vector<std::string> const& names)
{
  Json array = Json::array();
  for (std::string const& name : names) array.push_back(unreachable_object(name, {}));
  if (names.empty()) array.push_back(unreachable_object(nullptr, {}));
  return dump(array);
}
