// What the lines of a job are: the filter's or another's, an end, a report.
#pragma once

#include <string>
#include <string_view>

// Only the filter says this, or the scheduler of it.
bool is_of_filter(std::string_view text);

// The scheduler says how the job ended.
bool is_end_of_job(std::string_view text);

// What a line reports of the ribbon; empty for a line that reports none of it.
std::string marker_text(std::string_view text);
