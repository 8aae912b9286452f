// A scheduler of one queue in the test's own process.
#include "tests/admin/fake_scheduler.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <string_view>

namespace {

FakeScheduler* fake = nullptr;
ipp_status_t last_error = IPP_STATUS_OK;
int connection_error = 0;
std::chrono::nanoseconds paused{0};

constexpr int ASK = 7;

void add_texts(ipp_t* answer, char const* name, std::vector<std::string> const& texts)
{
  std::vector<char const*> values;
  for (std::string const& text : texts) values.push_back(text.c_str());
  if (values.empty()) values.push_back("none");
  ippAddStrings(answer, IPP_TAG_PRINTER, IPP_TAG_KEYWORD, name, static_cast<int>(values.size()),
                nullptr, values.data());
}

void tell_queue(ipp_t* answer)
{
  auto const add_text = [&](ipp_tag_t tag, char const* name, std::string const& text) {
    ippAddString(answer, IPP_TAG_PRINTER, tag, name, nullptr, text.c_str());
  };
  add_text(IPP_TAG_NAME, "printer-name", "photo");
  ippAddInteger(answer, IPP_TAG_PRINTER, IPP_TAG_ENUM, "printer-type",
                fake->is_class ? CUPS_PRINTER_CLASS : 0);
  ippAddInteger(answer, IPP_TAG_PRINTER, IPP_TAG_ENUM, "printer-state", fake->state);
  add_text(IPP_TAG_TEXT, "printer-state-message", fake->message);
  add_texts(answer, "printer-state-reasons", fake->reasons);
  ippAddBoolean(answer, IPP_TAG_PRINTER, "printer-is-accepting-jobs", fake->accepting ? 1 : 0);
  add_text(IPP_TAG_URI, "device-uri", "socket://h/?snmp=false");
  // The scheduler offers what its PPD file lists.
  bool const lists =
      fake->ppd.find("*cupsCommands: \"ReportLevels ReportStatus\"") != std::string::npos;
  add_texts(answer, "printer-commands",
            lists ? std::vector<std::string>{"ReportLevels", "ReportStatus"}
                  : std::vector<std::string>{});
  ippAddInteger(answer, IPP_TAG_PRINTER, IPP_TAG_INTEGER, "marker-levels", 50);
  ippAddInteger(answer, IPP_TAG_PRINTER, IPP_TAG_INTEGER, "marker-change-time", fake->level_time);
  ippAddInteger(answer, IPP_TAG_PRINTER, IPP_TAG_INTEGER, "printer-up-time", 3000);
}

void tell_job(ipp_t* answer, int id, char const* name, ipp_jstate_t state)
{
  ippAddInteger(answer, IPP_TAG_JOB, IPP_TAG_INTEGER, "job-id", id);
  ippAddString(answer, IPP_TAG_JOB, IPP_TAG_NAME, "job-name", nullptr, name);
  ippAddInteger(answer, IPP_TAG_JOB, IPP_TAG_ENUM, "job-state", state);
}

void tell_job_state(ipp_t* answer)
{
  JobRow const row = fake->job_rows.front();
  if (fake->job_rows.size() > 1) fake->job_rows.erase(fake->job_rows.begin());
  fake->level_time = row.level_time;
  tell_job(answer, fake->job, "velmoctl ask", row.state);
}

// With other calls than velmoctl makes, which may be told to fail.
std::string all_of(int in)
{
  std::string bytes(static_cast<std::size_t>(lseek(in, 0, SEEK_END)), '\0');
  lseek(in, 0, SEEK_SET);
  if (read(in, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) std::abort();
  return bytes;
}

// With the old PPD file goes every reason, and with one that cannot be stored as well.
void take_ppd(int in)
{
  fake->ppd = all_of(in);
  fake->reasons.clear();
}

void carry_out(ipp_t* request, int in, int out, ipp_t* answer)
{
  switch (ippGetOperation(request)) {
    case IPP_OP_GET_PRINTER_ATTRIBUTES:
    case IPP_OP_CUPS_GET_PRINTERS:
      return tell_queue(answer);
    case IPP_OP_CUPS_GET_PPD:
      if (pwrite(out, fake->ppd.data(), fake->ppd.size(), 0) < 0) std::abort();
      return;
    case IPP_OP_CUPS_ADD_MODIFY_PRINTER:
      return take_ppd(in);
    case IPP_OP_PAUSE_PRINTER:
      fake->reasons.emplace_back("paused");
      return;
    case IPP_OP_HOLD_NEW_JOBS:
      fake->reasons.emplace_back("hold-new-jobs");
      return;
    case IPP_OP_GET_JOBS:
      tell_job(answer, 3, "holiday", IPP_JSTATE_PENDING);
      ippAddSeparator(answer);
      if (fake->is_job_waiting) tell_job(answer, fake->job, "velmoctl ask", IPP_JSTATE_PENDING);
      return;
    case IPP_OP_PRINT_JOB:
      fake->job = ASK;
      return tell_job(answer, ASK, "velmoctl ask", IPP_JSTATE_PENDING);
    case IPP_OP_GET_JOB_ATTRIBUTES:
      return tell_job_state(answer);
    case IPP_OP_CANCEL_JOB:
      fake->is_job_cancelled = true;
      return;
    default:
      std::abort();
  }
}

ipp_t* refused(ipp_t* answer, ipp_status_t status, char const* message = nullptr)
{
  ippSetStatusCode(answer, status);
  if (message)
    ippAddString(answer, IPP_TAG_OPERATION, IPP_TAG_TEXT, "status-message", nullptr, message);
  return answer;
}

// A connection that breaks may leave the status of the request before.
ipp_t* lost(ipp_t* answer, ipp_status_t status)
{
  ippDelete(answer);
  last_error = status;
  return nullptr;
}

ipp_t* emptied(ipp_t* answer, int out)
{
  ippDelete(answer);
  if (out >= 0 && ftruncate(out, 0) != 0) std::abort();
  ipp_t* const empty = ippNew();
  ippSetStatusCode(empty, IPP_STATUS_OK);
  return empty;
}

ipp_t* answer_to(ipp_t* request, int in, int out, Mishap mishap)
{
  ipp_t* const answer = ippNew();
  ippSetStatusCode(answer, IPP_STATUS_OK);
  if (mishap == Mishap::Forbidden) return refused(answer, IPP_STATUS_ERROR_FORBIDDEN);
  if (mishap == Mishap::NotFound) return refused(answer, IPP_STATUS_ERROR_NOT_FOUND);
  if (mishap == Mishap::Busy) return refused(answer, IPP_STATUS_ERROR_BUSY, "come back later");
  if (mishap == Mishap::NoAnswer) return lost(answer, IPP_STATUS_ERROR_SERVICE_UNAVAILABLE);
  carry_out(request, in, out, answer);
  if (mishap == Mishap::Empty) return emptied(answer, out);
  if (mishap == Mishap::AnswerLost) return lost(answer, IPP_STATUS_OK);
  if (mishap != Mishap::BrokenOff) return answer;
  connection_error = EPIPE;
  if (out < 0) return lost(answer, IPP_STATUS_OK);
  if (ftruncate(out, static_cast<off_t>(fake->ppd.size() / 2)) != 0) std::abort();
  return answer;
}

}  // namespace

bool FakeScheduler::has(char const* reason) const
{
  return std::ranges::find(reasons, reason) != reasons.end();
}

FakeConnection::FakeConnection(FakeScheduler& answering)
{
  fake = &answering;
  last_error = IPP_STATUS_OK;
  connection_error = 0;
}

FakeConnection::~FakeConnection() { fake = nullptr; }

// The names that --wrap asks for are reserved ones; there is no other way to spell them.
// NOLINTBEGIN(clang-diagnostic-reserved-identifier)
extern "C" {

ipp_t* __wrap_cupsDoIORequest(http_t* /*http*/, ipp_t* request, char const* /*resource*/, int in,
                              int out)
{
  fake->requests.push_back(ippGetOperation(request));
  int const number = static_cast<int>(fake->requests.size());
  if (fake->before_request) fake->before_request(number, ippGetOperation(request));
  connection_error = 0;
  bool const fails = fake->goes_on ? fake->failing_request != 0 && number >= fake->failing_request
                                   : number == fake->failing_request;
  ipp_t* const answer = answer_to(request, in, out, fails ? fake->mishap : Mishap::None);
  ippDelete(request);
  return answer;
}

http_status_t __wrap_cupsGetFd(http_t* /*http*/, char const* resource, int out)
{
  if (std::string_view(resource) != "/admin/conf/cupsd.conf") return HTTP_STATUS_NOT_FOUND;
  if (!fake->conf) return HTTP_STATUS_FORBIDDEN;
  connection_error = fake->is_conf_broken_off ? EPIPE : 0;
  std::string const conf = *fake->conf;
  auto const size = static_cast<ssize_t>(conf.size());
  if (write(out, conf.data(), conf.size()) != size) return HTTP_STATUS_ERROR;
  return HTTP_STATUS_OK;
}

ipp_status_t __wrap_cupsLastError() { return last_error; }

int __wrap_httpError(http_t* /*http*/) { return connection_error; }

int __wrap_nanosleep(timespec const* time, timespec* /*rest*/)
{
  paused += std::chrono::seconds(time->tv_sec) + std::chrono::nanoseconds(time->tv_nsec);
  return 0;
}

#ifdef __clang__  // The name is that of a C++ function, by which the linker knows it.
#pragma clang diagnostic ignored "-Wreturn-type-c-linkage"
#endif
std::chrono::steady_clock::time_point __wrap__ZNSt6chrono3_V212steady_clock3nowEv()
{
  return std::chrono::steady_clock::time_point(paused);
}

}  // extern "C"
// NOLINTEND(clang-diagnostic-reserved-identifier)
