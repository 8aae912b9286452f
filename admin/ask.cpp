// Command jobs that have the printers of queues asked, and the wait for their values.
#include "admin/ask.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <thread>
#include <utility>

#include "admin/command_job.h"
#include "admin/declined.h"
#include "admin/queue.h"
#include "admin/signal_hold.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto PAUSE = std::chrono::milliseconds(50);
// The scheduler runs two programs for each. One that waits for a printer which is off must not
// keep all others waiting.
constexpr std::size_t AT_ONCE = 50;

// Tells from what the scheduler says whether a job has brought its values.
class Progress {
public:
  // The level's time is the scheduler's, in whole seconds: a new one is sure to be the job's
  // only if it was seen to be an old one while the job ran already.
  bool are_values_in(ipp_jstate_t state, Queue const& queue)
  {
    if (state == IPP_JSTATE_COMPLETED) return true;
    if (state != IPP_JSTATE_PROCESSING) return false;
    if (!is_running) before = queue.level_time;
    is_running = true;
    return queue.level_time != before;
  }
  [[nodiscard]] bool isRunning() const { return is_running; }

private:
  bool is_running = false;
  int before = 0;
};

// Why there is nothing more to wait for; empty if there is.
std::string ended(ipp_jstate_t state, Queue const& queue, int id)
{
  if (state == IPP_JSTATE_CANCELED) return "its job " + std::to_string(id) + " was cancelled";
  if (state == IPP_JSTATE_HELD) return "its job " + std::to_string(id) + " is held";
  if (state == IPP_JSTATE_ABORTED || state == IPP_JSTATE_STOPPED)
    return "its job " + std::to_string(id) + " failed; the scheduler's error_log says why";
  return queue.state == IPP_PSTATE_STOPPED ? declined(queue) : std::string();
}

std::string timed_out(bool is_running, int timeout)
{
  std::string const seconds = std::to_string(timeout) + " s";
  if (is_running)
    return "has not brought its values within " + seconds + "; velmoctl status shows them later";
  return "was busy for " + seconds + ", so its printer could not be asked; try again later";
}

// An ask whose job is with the scheduler.
struct OpenAsk {
  std::size_t number;  // of the queue among those that are asked
  int id;
  int sent;        // by the scheduler's clock, in seconds
  bool is_joined;  // the job is one that was waiting already
  Clock::time_point deadline;
  Progress progress;
};

struct Waited {
  AskResult result;
  bool goes_on;  // the job may still bring its values
};

// The asks of one call: some open, some ended, some not begun.
class Asks {
public:
  Asks(Scheduler const& it, std::vector<std::string> const& queues, int seconds)
      : scheduler(it), names(queues), timeout(seconds), results(queues.size())
  {
  }

  std::vector<AskResult> run();

private:
  void begin();
  bool end_if_done(OpenAsk& ask);
  std::optional<Waited> look_at(OpenAsk& ask) const;

  Scheduler const& scheduler;
  std::vector<std::string> const& names;
  int timeout;
  std::vector<AskResult> results;
  std::size_t next = 0;
  std::vector<OpenAsk> open;
};

std::vector<AskResult> Asks::run()
{
  while (next < names.size() || !open.empty()) {
    while (next < names.size() && open.size() < AT_ONCE) begin();
    std::vector<OpenAsk> left;
    for (OpenAsk& ask : open)
      if (!end_if_done(ask)) left.push_back(ask);
    open = std::move(left);
    if (!open.empty()) std::this_thread::sleep_for(PAUSE);
  }
  return std::move(results);
}

// Asks the next one, unless the queue declines.
void Asks::begin()
{
  std::size_t const number = next;
  next += 1;
  AskResult& result = results[number] = {false, "was interrupted"};
  if (SignalHold::hasSignalCome()) return;
  QueueAnswer const queue = get_queue(scheduler, names[number]);
  result.text = queue.queue ? declined(*queue.queue) : queue.error;
  if (!result.text.empty()) return;
  std::optional<int> const joined = waiting_ask(scheduler, names[number]);
  SentJob const job = joined ? SentJob{*joined, {}} : send_ask(scheduler, names[number]);
  result.text = job.error;
  if (job.id == 0) return;
  open.push_back({number,
                  job.id,
                  queue.queue->up_time,
                  joined.has_value(),
                  Clock::now() + std::chrono::seconds(timeout),
                  {}});
}

bool Asks::end_if_done(OpenAsk& ask)
{
  std::optional<Waited> waited = look_at(ask);
  if (!waited) return false;
  if (!ask.is_joined && !waited->goes_on) cancel_job(scheduler, names[ask.number], ask.id);
  results[ask.number] = std::move(waited->result);
  return true;
}

// What came of it; nothing as long as there is something to wait for.
std::optional<Waited> Asks::look_at(OpenAsk& ask) const
{
  std::optional<ipp_jstate_t> const state = job_state(scheduler, names[ask.number], ask.id);
  QueueAnswer const queue = get_queue(scheduler, names[ask.number]);
  // With PreserveJobHistory No the scheduler forgets a job as soon as it has ended.
  if (!state && queue.queue && queue.queue->level_time >= ask.sent) return Waited{{true, {}}, true};
  if (!state || !queue.queue)
    return Waited{{false, "the scheduler tells nothing about its job any more"}, false};
  if (ask.progress.are_values_in(*state, *queue.queue)) return Waited{{true, {}}, true};
  if (std::string why = ended(*state, *queue.queue, ask.id); !why.empty())
    return Waited{{false, std::move(why)}, false};
  if (SignalHold::hasSignalCome()) return Waited{{false, "was interrupted"}, false};
  if (Clock::now() < ask.deadline) return std::nullopt;
  bool const is_running = ask.progress.isRunning();
  return Waited{{false, timed_out(is_running, timeout)}, is_running};
}

}  // namespace

std::vector<AskResult> ask_printers(Scheduler const& scheduler,
                                    std::vector<std::string> const& names, int timeout)
{
  // Who ends the program leaves no job of ours behind, unless the scheduler does not answer.
  SignalHold const hold(OpenRequests::End);
  return Asks(scheduler, names, timeout).run();
}
