// A connection to one scheduler, and the requests that are sent over it.
#include "admin/scheduler.h"

#include "admin/signal_hold.h"

namespace {

constexpr int CONNECT_MILLISECONDS = 10'000;

// Called after each second without a byte from the scheduler; 0 gives the connection up.
int is_worth_waiting(http_t* /*http*/, void* data)
{
  int& seconds_left = *static_cast<int*>(data);
  return --seconds_left > 0 && !SignalHold::endsRequests() ? 1 : 0;
}

// While it lives, a scheduler that falls silent is given up.
class Patience {
public:
  explicit Patience(Scheduler const& scheduler)
      : http(scheduler.http.get()), seconds_left(scheduler.patience)
  {
    httpSetTimeout(http, 1, is_worth_waiting, &seconds_left);
  }
  ~Patience() { httpSetTimeout(http, 0, nullptr, nullptr); }
  Patience(Patience const&) = delete;
  Patience& operator=(Patience const&) = delete;

private:
  http_t* http;
  int seconds_left;
};

char const* no_password(char const* /*prompt*/, http_t* /*http*/, char const* /*method*/,
                        char const* /*resource*/, void* /*data*/)
{
  return nullptr;
}

// In our own words: libcups would answer in the language of the environment.
std::string error_text(ipp_status_t status)
{
  switch (status) {
    case IPP_STATUS_ERROR_FORBIDDEN:
    case IPP_STATUS_ERROR_NOT_AUTHENTICATED:
    case IPP_STATUS_ERROR_NOT_AUTHORIZED:
    case IPP_STATUS_ERROR_CUPS_AUTHENTICATION_CANCELED:
      return "the scheduler does not let the user " + std::string(cupsUser())
             + " do this; run it as root or as a user whom its policy names";
    case IPP_STATUS_ERROR_NOT_FOUND:
      return "the scheduler does not know it";
    case IPP_STATUS_ERROR_REQUEST_VALUE:
      return "the scheduler could not store what was sent; its error_log says why, it may be a "
             "full disk";
    case IPP_STATUS_ERROR_SERVICE_UNAVAILABLE:
    case IPP_STATUS_ERROR_INTERNAL:
      return "the scheduler gave no answer; its error_log says why";
    default:
      return "the scheduler answers " + std::string(ippErrorString(status));
  }
}

// What the scheduler itself says about its refusal.
std::string status_message(ipp_t* answer)
{
  ipp_attribute_t* const message = ippFindAttribute(answer, "status-message", IPP_TAG_TEXT);
  char const* const text = message ? ippGetString(message, 0, nullptr) : nullptr;
  return text ? " (" + std::string(text) + ")" : std::string();
}

}  // namespace

NoPasswords::NoPasswords() { cupsSetPasswordCB2(no_password, nullptr); }

// libcups has its own way back then, the question on the terminal.
NoPasswords::~NoPasswords() { cupsSetPasswordCB2(nullptr, nullptr); }

Scheduler connect(std::string const& server)
{
  if (!server.empty()) cupsSetServer(server.c_str());
  Scheduler scheduler{server.empty() ? cupsServer() : server, nullptr};
  scheduler.http.reset(httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(),
                                    1, CONNECT_MILLISECONDS, nullptr));
  return scheduler;
}

// The language is fixed, so that no answer depends on the environment.
Ipp make_request(ipp_op_t operation, std::string const& queue)
{
  Ipp request(ippNew());
  ippSetOperation(request.get(), operation);
  ippSetRequestId(request.get(), 1);
  ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_CHARSET, "attributes-charset", nullptr,
               "utf-8");
  ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_LANGUAGE, "attributes-natural-language",
               nullptr, "en");
  if (!queue.empty()) {
    char uri[HTTP_MAX_URI];
    httpAssembleURIf(HTTP_URI_CODING_ALL, uri, sizeof uri, "ipp", nullptr, "localhost", 0,
                     "/printers/%s", queue.c_str());
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, uri);
  }
  ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr,
               cupsUser());
  return request;
}

Answer send(Scheduler const& scheduler, Ipp request, char const* resource, int in, int out)
{
  Patience const patience(scheduler);
  Answer answer{Ipp(cupsDoIORequest(scheduler.http.get(), request.release(), resource, in, out)),
                IPP_STATUS_OK,
                {}};
  answer.status = answer.ipp ? ippGetStatusCode(answer.ipp.get()) : cupsLastError();
  if (!answer.ipp && answer.status < IPP_STATUS_ERROR_BAD_REQUEST)
    answer.status = IPP_STATUS_ERROR_SERVICE_UNAVAILABLE;
  if (answer.status >= IPP_STATUS_REDIRECTION_OTHER_SITE)
    answer.error = error_text(answer.status) + status_message(answer.ipp.get());
  return answer;
}

http_status_t get_file(Scheduler const& scheduler, char const* path, int out)
{
  Patience const patience(scheduler);
  return cupsGetFd(scheduler.http.get(), path, out);
}

std::vector<std::vector<ipp_attribute_t*>> groups(Answer const& answer, ipp_tag_t kind)
{
  std::vector<std::vector<ipp_attribute_t*>> found;
  bool inside = false;
  for (auto* it = ippFirstAttribute(answer.ipp.get()); it;
       it = ippNextAttribute(answer.ipp.get())) {
    // One without a name stands between two groups.
    bool const is_member = ippGetGroupTag(it) == kind && ippGetName(it);
    if (is_member && !inside) found.emplace_back();
    if (is_member) found.back().push_back(it);
    inside = is_member;
  }
  return found;
}

void add_keyword(Ipp const& request, ipp_tag_t group, char const* name, char const* value)
{
  ippAddString(request.get(), group, IPP_TAG_KEYWORD, name, nullptr, value);
}
