// The jobs of a queue, as far as they tell when its printer is to be asked.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "admin/scheduler.h"

struct QueuedJob {
  int id;
  ipp_jstate_t state;
  bool is_command;
  bool was_begun;

  // A held one keeps nobody from asking.
  [[nodiscard]] bool isActive() const
  {
    return state == IPP_JSTATE_PENDING || state == IPP_JSTATE_PROCESSING;
  }
};

enum class Whose { Everybodys, Ours };

// The jobs that are not completed; nothing if the scheduler does not tell.
std::optional<std::vector<QueuedJob>> open_jobs(Scheduler const& scheduler,
                                                std::string const& queue, Whose whose);

// A job that has ended; nothing where the scheduler has forgotten it.
std::optional<QueuedJob> ended_job(Scheduler const& scheduler, std::string const& queue, int id);

// Whether a job that has ended may have used up a print. The level was brought after the job
// began if `level_time` is newer than `begun`; both are the scheduler's seconds, in one of which
// a print can begin and a level have come before it. A job that was thrown out of the history
// with its queue ends as cancelled.
bool was_print(std::optional<QueuedJob> const& job, ipp_jstate_t state, int begun, int level_time);
