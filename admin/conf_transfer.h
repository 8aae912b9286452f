// The scheduler's cupsd.conf, fetched from it.
#pragma once

#include <optional>
#include <string>

#include "admin/scheduler.h"

// Nothing if the scheduler does not show it to this user, who is asked for no password.
std::optional<std::string> get_conf(Scheduler const& scheduler);
