// velmoctl list: every queue of the scheduler, and how it stands.
#pragma once

#include "admin/scheduler.h"

// Returns the exit status: 1 if the scheduler does not tell.
int run_list(Scheduler const& scheduler, bool as_json);
