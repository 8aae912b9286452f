// Several servers, asked at the same time.
#include "admin/servers.h"

#include <chrono>
#include <system_error>
#include <thread>
#include <utility>

namespace {

using Time = std::chrono::steady_clock::time_point;

constexpr auto FIRST_WORD = std::chrono::seconds(3);
// Between two bytes of an answer; that about thousands of queues may take longer as a whole.
constexpr int NEXT_WORD_SECONDS = 3;
constexpr auto LAST_WORD = std::chrono::seconds(60);

// Why it cannot be asked. A small question first tells a server that hangs from one that needs its
// time for the large answer.
std::string greet(Scheduler const& scheduler)
{
  if (!scheduler.http) return "cannot be reached";
  Answer const answer = send(scheduler, make_request(IPP_OP_CUPS_GET_DEFAULT, {}), "/");
  return answer.ipp ? std::string() : answer.error;
}

void ask_from_here(std::string const& name, std::vector<std::string> const& queues, int low,
                   std::promise<std::string>& greeting, std::promise<Statuses>& found)
{
  NoPasswords const none;
  Scheduler scheduler = connect(name);
  std::string const trouble = greet(scheduler);
  greeting.set_value(trouble);
  scheduler.patience = NEXT_WORD_SECONDS;
  found.set_value(trouble.empty() ? look(scheduler, queues, low) : Statuses{});
}

template <class Value>
std::future<Value> known(Value value)
{
  std::promise<Value> promise;
  promise.set_value(std::move(value));
  return promise.get_future();
}

// Nobody waits for the thread: what it hangs in, a look-up of a name for example, has no end that
// we could set.
void ask(AskedServer& server, std::vector<std::string> const& queues, int low)
{
  std::promise<std::string> greeting;
  std::promise<Statuses> found;
  server.greeting = greeting.get_future();
  server.found = found.get_future();
  auto work = [=, name = server.name, greeting = std::move(greeting),
               found = std::move(found)]() mutable {
    ask_from_here(name, queues, low, greeting, found);
  };
  try {
    std::thread(std::move(work)).detach();
  } catch (std::system_error const&) {
    server.greeting =
        known(std::string("cannot be asked: the system has no room for one more thread"));
    server.found = known(Statuses{});
  }
}

ServerStatuses answer_of(AskedServer& server, Time start)
{
  if (server.greeting.wait_until(start + FIRST_WORD) != std::future_status::ready)
    return {server.name, {}, "does not answer within 3 s"};
  if (server.found.wait_until(start + LAST_WORD) != std::future_status::ready)
    return {server.name, {}, "does not answer to the end within 60 s"};
  return {server.name, server.found.get(), server.greeting.get()};
}

}  // namespace

std::vector<ServerStatuses> ask_servers(std::vector<AskedServer>& servers,
                                        std::vector<std::string> const& queues, int low)
{
  Time const start = std::chrono::steady_clock::now();
  for (AskedServer& server : servers)
    if (!server.found.valid()) ask(server, queues, low);
  std::vector<ServerStatuses> answers;
  answers.reserve(servers.size());
  for (AskedServer& server : servers) answers.push_back(answer_of(server, start));
  return answers;
}
