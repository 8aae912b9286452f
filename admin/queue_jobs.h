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

// Whether a job that has ended may have used up a print.
bool was_print(QueuedJob const& job);

// What the events and the queue's level tell of a job that the scheduler has forgotten.
struct JobTraces {
  ipp_jstate_t state;
  bool is_printing;  // the queue was, when the job ended
  int begun;         // both by the scheduler's clock, in seconds; 0: unseen
  int level_time;
};

// The same of such a job. It brought the level if that is newer than the second in which it
// began: in one and the same second a level can have come before a print.
bool was_print(JobTraces const& traces);
