// The command jobs that velmoctl sends.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "admin/scheduler.h"

struct Job {
  int id;
  std::string name;
  ipp_jstate_t state;
};

struct SentJob {
  int id;             // 0: it was not taken
  std::string error;  // why not
};

// Sends a job that has level and errors reported. It prints no banner, comes before what
// waits, and does not stay for longer than a minute.
SentJob send_ask(Scheduler const& scheduler, std::string const& queue);

// A job of ours that has been sent and still waits in the queue.
std::optional<int> waiting_ask(Scheduler const& scheduler, std::string const& queue);

// The state of a job; nothing if the scheduler does not tell.
std::optional<ipp_jstate_t> job_state(Scheduler const& scheduler, std::string const& queue, int id);

void cancel_job(Scheduler const& scheduler, std::string const& queue, int id);
