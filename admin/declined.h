// Why a queue's printer cannot be asked.
#pragma once

#include <string>

#include "admin/queue.h"

// What to say of it, behind the queue's name; empty if it can be asked.
std::string declined(Queue const& queue);
