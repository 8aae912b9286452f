// The scheduler's events, fetched through a pull subscription.
#include "admin/notifications.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

constexpr int LEASE_SECONDS = 3600;
// A queue that is attached or detached tells only that its configuration has changed.
constexpr char const* EVENTS[] = {"job-completed", "printer-state-changed",
                                  "printer-config-changed"};

void add_integer(Ipp const& request, ipp_tag_t group, char const* name, int value)
{
  ippAddInteger(request.get(), group, IPP_TAG_INTEGER, name, value);
}

Ipp subscription_request(ipp_op_t operation)
{
  Ipp request = make_request(operation, {});
  ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr,
               "ipp://localhost/");
  return request;
}

std::string text(ipp_attribute_t* attribute)
{
  char const* const value = ippGetString(attribute, 0, nullptr);
  return value ? value : "";
}

void read_attribute(ipp_attribute_t* attribute, Event& event)
{
  std::string_view const name = ippGetName(attribute);
  int const number = ippGetInteger(attribute, 0);
  if (name == "notify-sequence-number") event.number = number;
  if (name == "notify-subscribed-event") event.is_job_end = text(attribute) == EVENTS[0];
  if (name == "notify-job-id") event.job = number;
  if (name == "printer-name") event.queue = text(attribute);
  if (name == "printer-up-time") event.time = number;
  if (name == "job-state") event.job_state = static_cast<ipp_jstate_t>(number);
  if (name == "printer-state") event.queue_state = static_cast<ipp_pstate_t>(number);
}

std::vector<Event> read_events(Answer const& answer)
{
  std::vector<Event> events;
  for (auto const& group : groups(answer, IPP_TAG_EVENT_NOTIFICATION)) {
    events.emplace_back();
    for (ipp_attribute_t* const attribute : group) read_attribute(attribute, events.back());
  }
  return events;
}

int integer(Answer const& answer, char const* name)
{
  return ippGetInteger(ippFindAttribute(answer.ipp.get(), name, IPP_TAG_INTEGER), 0);
}

}  // namespace

// Without a lease it would outlive us, and fill the scheduler's list of subscriptions.
SubscribeResult subscribe(Scheduler const& scheduler)
{
  Ipp request = subscription_request(IPP_OP_CREATE_PRINTER_SUBSCRIPTIONS);
  ippAddStrings(request.get(), IPP_TAG_SUBSCRIPTION, IPP_TAG_KEYWORD, "notify-events",
                static_cast<int>(std::size(EVENTS)), nullptr, EVENTS);
  add_keyword(request, IPP_TAG_SUBSCRIPTION, "notify-pull-method", "ippget");
  add_integer(request, IPP_TAG_SUBSCRIPTION, "notify-lease-duration", LEASE_SECONDS);
  Answer const answer = send(scheduler, std::move(request), "/");
  if (!answer.error.empty()) return {{}, answer.error};
  return {{integer(answer, "notify-subscription-id"), 0}, {}};
}

void renew(Scheduler const& scheduler, Subscription const& subscription)
{
  Ipp request = subscription_request(IPP_OP_RENEW_SUBSCRIPTION);
  add_integer(request, IPP_TAG_OPERATION, "notify-subscription-id", subscription.id);
  add_integer(request, IPP_TAG_SUBSCRIPTION, "notify-lease-duration", LEASE_SECONDS);
  send(scheduler, std::move(request), "/");
}

void unsubscribe(Scheduler const& scheduler, Subscription const& subscription)
{
  Ipp request = subscription_request(IPP_OP_CANCEL_SUBSCRIPTION);
  add_integer(request, IPP_TAG_OPERATION, "notify-subscription-id", subscription.id);
  send(scheduler, std::move(request), "/");
}

News fetch_news(Scheduler const& scheduler, Subscription const& subscription)
{
  Ipp request = subscription_request(IPP_OP_GET_NOTIFICATIONS);
  add_integer(request, IPP_TAG_OPERATION, "notify-subscription-ids", subscription.id);
  add_integer(request, IPP_TAG_OPERATION, "notify-sequence-numbers",
              std::max(1, subscription.last));
  Answer const answer = send(scheduler, std::move(request), "/");
  if (!answer.error.empty()) return {answer.error, false, {}, 0};
  News news = new_events(read_events(answer), subscription.last);
  news.now = integer(answer, "printer-up-time");
  return news;
}

News new_events(std::vector<Event> fetched, int last)
{
  News news{};
  int expected = std::max(1, last);
  for (Event const& event : fetched) {
    if (event.number != expected) news.is_gap = true;
    expected = event.number + 1;
  }
  if (last > 0 && fetched.empty()) news.is_gap = true;
  std::erase_if(fetched, [&](Event const& it) { return it.number == last; });
  news.events = std::move(fetched);
  return news;
}
