// A connection to one scheduler, and the requests that are sent over it.
#pragma once

#include <cups/cups.h>

#include <memory>
#include <string>
#include <vector>

struct CloseHttp {
  void operator()(http_t* http) const { httpClose(http); }
};
struct DeleteIpp {
  void operator()(ipp_t* ipp) const { ippDelete(ipp); }
};
using Ipp = std::unique_ptr<ipp_t, DeleteIpp>;

struct Scheduler {
  std::string server;  // as the user named it, or as libcups found it
  std::unique_ptr<http_t, CloseHttp> http;
  // Seconds without a byte after which it is given up. An upload may make the scheduler look for
  // many filters before it answers.
  int patience = 60;
};

// While it lives, nobody is asked for a password in this thread: what needs one is refused.
class NoPasswords {
public:
  NoPasswords();
  ~NoPasswords();
  NoPasswords(NoPasswords const&) = delete;
  NoPasswords& operator=(NoPasswords const&) = delete;
};

// What came back: the answer, or why there is none.
struct Answer {
  Ipp ipp;  // null without an answer
  ipp_status_t status;
  std::string error;  // empty if the scheduler did what it was asked for
};

// Connects to HOST[:PORT] or a socket's path; empty is what CUPS_SERVER and client.conf say.
// Without a connection `http` is null.
Scheduler connect(std::string const& server);

// A request about one queue, or with an empty name about none.
Ipp make_request(ipp_op_t operation, std::string const& queue);

// Sends it. A descriptor of 0 or more is what is sent behind the request, or where what comes
// behind the answer is written to.
Answer send(Scheduler const& scheduler, Ipp request, char const* resource, int in = -1,
            int out = -1);

// Fetches a file of the scheduler's, which is written to the descriptor. What comes back is the
// status of HTTP.
http_status_t get_file(Scheduler const& scheduler, char const* path, int out);

// The named attributes of each group of this kind, in the order of the answer; an answer about
// many queues or jobs has a group for each.
std::vector<std::vector<ipp_attribute_t*>> groups(Answer const& answer, ipp_tag_t kind);

void add_keyword(Ipp const& request, ipp_tag_t group, char const* name, char const* value);
