// The one way in which velmoctl changes a queue: read its PPD file, change it, give it back,
// look whether the scheduler makes of it what was meant.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "admin/ppd_attach.h"
#include "admin/queue.h"
#include "admin/scheduler.h"

// What attaching and detaching differ in.
struct PpdEdit {
  std::function<PpdChange(std::string_view)> change;
  bool attaches;  // the scheduler has to offer our commands afterwards
};

struct ChangeRules {
  bool dry_run;
  bool while_printing;
};

struct ChangeResult {
  enum class Outcome { Changed, NothingToDo, DryRun, NotDone };
  Outcome outcome;
  std::string text;                // the diff of a dry run, or why it was not done
  std::vector<std::string> lines;  // of the PPD file, which the text speaks of
  std::vector<std::string> lost;   // reasons of the queue that the scheduler forgot
};

ChangeResult change_ppd(Scheduler const& scheduler, Queue const& queue, PpdEdit const& edit,
                        ChangeRules const& rules);
