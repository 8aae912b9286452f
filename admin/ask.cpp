// One command job that has a queue's printer asked, and the wait for its values.
#include "admin/ask.h"

#include <chrono>
#include <thread>

#include "admin/command_job.h"
#include "admin/declined.h"
#include "admin/queue.h"
#include "admin/signal_hold.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto PAUSE = std::chrono::milliseconds(50);

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

struct Waited {
  AskResult result;
  bool goes_on;  // the job may still bring its values
};

Waited wait_for_values(Scheduler const& scheduler, std::string const& name, int id, int timeout)
{
  Progress progress;
  auto const deadline = Clock::now() + std::chrono::seconds(timeout);
  do {
    std::optional<ipp_jstate_t> const state = job_state(scheduler, name, id);
    QueueAnswer const queue = get_queue(scheduler, name);
    if (!state || !queue.queue)
      return {{false, "the scheduler tells nothing about its job any more"}, false};
    if (progress.are_values_in(*state, *queue.queue)) return {{true, {}}, true};
    if (std::string why = ended(*state, *queue.queue, id); !why.empty())
      return {{false, std::move(why)}, false};
    if (SignalHold::hasSignalCome()) return {{false, "was interrupted"}, false};
    std::this_thread::sleep_for(PAUSE);
  } while (Clock::now() < deadline);
  return {{false, timed_out(progress.isRunning(), timeout)}, progress.isRunning()};
}

}  // namespace

AskResult ask_printer(Scheduler const& scheduler, std::string const& name, int timeout)
{
  QueueAnswer const queue = get_queue(scheduler, name);
  if (!queue.queue) return {false, queue.error};
  if (std::string why = declined(*queue.queue); !why.empty()) return {false, std::move(why)};

  // Who ends the program leaves no job of ours behind, unless the scheduler does not answer.
  SignalHold const hold(OpenRequests::End);
  std::optional<int> const joined = waiting_ask(scheduler, name);
  SentJob const job = joined ? SentJob{*joined, {}} : send_ask(scheduler, name);
  if (job.id == 0) return {false, job.error};
  Waited const waited = wait_for_values(scheduler, name, job.id, timeout);
  if (!joined && !waited.goes_on) cancel_job(scheduler, name, job.id);
  return waited.result;
}
