// A scheduler in the test's own process that has events to tell, and takes command jobs.
#include "tests/fresh/fake_events.h"

namespace {

FakeEvents* fake = nullptr;

void add_integer(ipp_t* answer, ipp_tag_t group, char const* name, int value)
{
  ippAddInteger(answer, group, IPP_TAG_INTEGER, name, value);
}

// The queue that a request is for: the end of its URI.
std::string queue_of(ipp_t* request)
{
  std::string const uri =
      ippGetString(ippFindAttribute(request, "printer-uri", IPP_TAG_URI), 0, nullptr);
  return uri.substr(uri.rfind('/') + 1);
}

// What is asked for: the operation, its numbers and its events, and the queue of a command job.
void note(ipp_t* request)
{
  fake->requests += ippOpString(ippGetOperation(request));
  if (ippGetOperation(request) == IPP_OP_PRINT_JOB) fake->requests += " " + queue_of(request);
  for (ipp_attribute_t* it = ippFirstAttribute(request); it; it = ippNextAttribute(request)) {
    std::string const name = ippGetName(it) ? ippGetName(it) : "";
    if (!name.starts_with("notify-")) continue;
    for (int i = 0; i < ippGetCount(it); ++i)
      fake->requests +=
          " "
          + (ippGetValueTag(it) == IPP_TAG_INTEGER ? std::to_string(ippGetInteger(it, i))
                                                   : std::string(ippGetString(it, i, nullptr)));
  }
  fake->requests += "\n";
}

void tell_event(ipp_t* answer, FakeEvent const& event)
{
  constexpr ipp_tag_t GROUP = IPP_TAG_EVENT_NOTIFICATION;
  ippAddSeparator(answer);
  add_integer(answer, GROUP, "notify-sequence-number", event.number);
  ippAddString(answer, GROUP, IPP_TAG_KEYWORD, "notify-subscribed-event", nullptr,
               event.is_job_end ? "job-completed" : "printer-state-changed");
  ippAddString(answer, GROUP, IPP_TAG_NAME, "printer-name", nullptr, event.queue.c_str());
  add_integer(answer, GROUP, "printer-up-time", event.time);
  if (event.is_job_end) add_integer(answer, GROUP, "notify-job-id", event.number);
}

void tell_events(ipp_t* request, ipp_t* answer)
{
  int const first =
      ippGetInteger(ippFindAttribute(request, "notify-sequence-numbers", IPP_TAG_INTEGER), 0);
  add_integer(answer, IPP_TAG_OPERATION, "printer-up-time", fake->time);
  for (FakeEvent const& event : fake->kept)
    if (event.number >= first) tell_event(answer, event);
}

void tell_print(ipp_t* answer)
{
  if (fake->forgets) return ippSetStatusCode(answer, IPP_STATUS_ERROR_NOT_FOUND), void();
  add_integer(answer, IPP_TAG_JOB, "job-id", 1);
  add_integer(answer, IPP_TAG_JOB, "time-at-processing", fake->time);
}

void tell_queue(ipp_t* request, ipp_t* answer)
{
  constexpr char const* COMMANDS[] = {"ReportLevels", "ReportStatus"};
  std::string const queue = queue_of(request);
  ippAddString(answer, IPP_TAG_PRINTER, IPP_TAG_NAME, "printer-name", nullptr, queue.c_str());
  ippAddInteger(answer, IPP_TAG_PRINTER, IPP_TAG_ENUM, "printer-state", IPP_PSTATE_IDLE);
  ippAddBoolean(answer, IPP_TAG_PRINTER, "printer-is-accepting-jobs", 1);
  ippAddStrings(answer, IPP_TAG_PRINTER, IPP_TAG_KEYWORD, "printer-commands", 2, nullptr, COMMANDS);
  add_integer(answer, IPP_TAG_PRINTER, "queued-job-count", fake->open.contains(queue) ? 1 : 0);
  add_integer(answer, IPP_TAG_PRINTER, "marker-change-time", fake->level_time);
  add_integer(answer, IPP_TAG_PRINTER, "printer-up-time", fake->time);
}

void tell_jobs(ipp_t* request, ipp_t* answer)
{
  if (!fake->open.contains(queue_of(request))) return;
  add_integer(answer, IPP_TAG_JOB, "job-id", 1);
  ippAddInteger(answer, IPP_TAG_JOB, IPP_TAG_ENUM, "job-state", IPP_JSTATE_PROCESSING);
  ippAddString(answer, IPP_TAG_JOB, IPP_TAG_MIMETYPE, "document-format", nullptr,
               "application/vnd.cups-command");
}

void take_ask(ipp_t* request, ipp_t* answer)
{
  fake->open.insert(queue_of(request));
  add_integer(answer, IPP_TAG_JOB, "job-id", 1);
}

void tell_subscription(ipp_t* answer)
{
  if (!fake->has_room)
    return ippSetStatusCode(answer, IPP_STATUS_ERROR_TOO_MANY_SUBSCRIPTIONS), void();
  fake->last_id += 1;
  add_integer(answer, IPP_TAG_SUBSCRIPTION, "notify-subscription-id", fake->last_id);
}

void carry_out(ipp_t* request, ipp_t* answer)
{
  switch (ippGetOperation(request)) {
    case IPP_OP_CREATE_PRINTER_SUBSCRIPTIONS:
      return tell_subscription(answer);
    case IPP_OP_GET_NOTIFICATIONS:
      return tell_events(request, answer);
    case IPP_OP_GET_JOB_ATTRIBUTES:
      return tell_print(answer);
    case IPP_OP_GET_PRINTER_ATTRIBUTES:
      return tell_queue(request, answer);
    case IPP_OP_GET_JOBS:
      return tell_jobs(request, answer);
    case IPP_OP_PRINT_JOB:
      return take_ask(request, answer);
    default:
      return;
  }
}

}  // namespace

FakeEventSource::FakeEventSource(FakeEvents& answering) { fake = &answering; }
FakeEventSource::~FakeEventSource() { fake = nullptr; }

// The names that --wrap asks for are reserved ones; there is no other way to spell them.
// NOLINTBEGIN(clang-diagnostic-reserved-identifier)
extern "C" {

ipp_t* __wrap_cupsDoIORequest(http_t* /*http*/, ipp_t* request, char const* /*resource*/,
                              int /*in*/, int /*out*/)
{
  note(request);
  ipp_t* const answer = ippNew();
  ippSetStatusCode(answer, fake->is_there ? IPP_STATUS_OK : IPP_STATUS_ERROR_SERVICE_UNAVAILABLE);
  if (fake->is_there) carry_out(request, answer);
  ippDelete(request);
  return answer;
}

http_t* __wrap_httpConnect2(char const* /*host*/, int /*port*/, http_addrlist_t* /*addresses*/,
                            int /*family*/, http_encryption_t /*encryption*/, int /*blocking*/,
                            int /*milliseconds*/, int* /*cancel*/)
{
  return fake->is_there ? reinterpret_cast<http_t*>(fake) : nullptr;
}

void __wrap_httpSetTimeout(http_t* /*http*/, double /*timeout*/, http_timeout_cb_t /*callback*/,
                           void* /*data*/)
{
}

void __wrap_httpClose(http_t* /*http*/) {}

}  // extern "C"
// NOLINTEND(clang-diagnostic-reserved-identifier)

// std::chrono::steady_clock::now, whose C++ name --wrap puts its words before.
using Clock = std::chrono::steady_clock;
Clock::time_point real_now() asm("__real__ZNSt6chrono3_V212steady_clock3nowEv");
Clock::time_point wrapped_now() asm("__wrap__ZNSt6chrono3_V212steady_clock3nowEv");
Clock::time_point wrapped_now() { return fake ? fake->now : real_now(); }
