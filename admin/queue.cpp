// What the scheduler says about a queue.
#include "admin/queue.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr char const* ATTRIBUTES[] = {"device-uri",
                                      "marker-change-time",
                                      "marker-levels",
                                      "marker-message",
                                      "marker-names",
                                      "member-names",
                                      "printer-commands",
                                      "printer-is-accepting-jobs",
                                      "printer-make-and-model",
                                      "printer-name",
                                      "printer-state",
                                      "printer-state-message",
                                      "printer-state-reasons",
                                      "printer-type",
                                      "printer-up-time",
                                      "queued-job-count"};

void ask_for_attributes(Ipp const& request)
{
  ippAddStrings(request.get(), IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes",
                static_cast<int>(std::size(ATTRIBUTES)), nullptr, ATTRIBUTES);
}

std::vector<std::string> texts(ipp_attribute_t* attribute)
{
  std::vector<std::string> values;
  for (int i = 0; i < ippGetCount(attribute); ++i)
    if (char const* const value = ippGetString(attribute, i, nullptr)) values.emplace_back(value);
  return values;
}

// A list of keywords, in which "none" stands for an empty one.
std::vector<std::string> keywords(ipp_attribute_t* attribute)
{
  std::vector<std::string> values = texts(attribute);
  std::erase(values, "none");
  return values;
}

std::string text(ipp_attribute_t* attribute)
{
  char const* const value = ippGetString(attribute, 0, nullptr);
  return value ? value : "";
}

void read_attribute(ipp_attribute_t* attribute, Queue& queue)
{
  std::string_view const name = ippGetName(attribute);
  if (name == "printer-name") queue.name = text(attribute);
  if (name == "printer-type")
    queue.is_class = (ippGetInteger(attribute, 0) & CUPS_PRINTER_CLASS) != 0;
  if (name == "member-names") queue.members = texts(attribute);
  if (name == "printer-state") queue.state = static_cast<ipp_pstate_t>(ippGetInteger(attribute, 0));
  if (name == "printer-state-message") queue.state_message = text(attribute);
  if (name == "printer-state-reasons") queue.reasons = keywords(attribute);
  if (name == "printer-is-accepting-jobs") queue.accepting = ippGetBoolean(attribute, 0) != 0;
  if (name == "queued-job-count") queue.jobs = ippGetInteger(attribute, 0);
  if (name == "device-uri") queue.device = text(attribute);
  if (name == "printer-make-and-model") queue.model = text(attribute);
  if (name == "printer-commands") queue.commands = keywords(attribute);
  if (name == "marker-levels") queue.level = ippGetInteger(attribute, 0);
  if (name == "marker-names") queue.ribbon = text(attribute);
  if (name == "marker-message") queue.message = text(attribute);
  if (name == "marker-change-time") queue.level_time = ippGetInteger(attribute, 0);
  if (name == "printer-up-time") queue.up_time = ippGetInteger(attribute, 0);
}

std::vector<Queue> read_queues(Answer const& answer)
{
  std::vector<Queue> queues;
  for (auto const& group : groups(answer, IPP_TAG_PRINTER)) {
    queues.emplace_back();
    for (ipp_attribute_t* const attribute : group) read_attribute(attribute, queues.back());
  }
  return queues;
}

}  // namespace

QueueAnswer get_queue(Scheduler const& scheduler, std::string const& name)
{
  Ipp request = make_request(IPP_OP_GET_PRINTER_ATTRIBUTES, name);
  ask_for_attributes(request);
  Answer const answer = send(scheduler, std::move(request), "/");
  if (answer.status == IPP_STATUS_ERROR_NOT_FOUND)
    return {{}, "there is no such queue; velmoctl list names those there are", true};
  if (!answer.error.empty()) return {{}, answer.error};
  std::vector<Queue> queues = read_queues(answer);
  if (queues.size() != 1) return {{}, "the scheduler says nothing about this queue"};
  return {std::move(queues.front()), {}};
}

QueuesAnswer get_queues(Scheduler const& scheduler)
{
  Ipp request = make_request(IPP_OP_CUPS_GET_PRINTERS, {});
  ask_for_attributes(request);
  Answer const answer = send(scheduler, std::move(request), "/");
  // A scheduler without any queue has nothing to show.
  if (answer.status == IPP_STATUS_ERROR_NOT_FOUND) return {};
  if (!answer.error.empty()) return {{}, answer.error};
  std::vector<Queue> queues = read_queues(answer);
  std::erase_if(queues, [](Queue const& it) { return it.is_class; });
  return {std::move(queues), {}};
}
