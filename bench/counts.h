// What can be counted instead of timed: instructions, system calls, writes, memory.
#pragma once

#include <string>

#include "bench/bars.h"

// For each further "ReportStatus" of a job.
std::string count_further_query(Bars& bars);

// At the end of a job with one "ReportLevels".
std::string count_memory(Bars& bars);
