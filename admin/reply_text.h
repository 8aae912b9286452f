// The printer's replies in words.
#pragma once

#include <string>
#include <string_view>

// One line for each field that the filter reads, by its name in the log: value and meaning.
// REQUIRES: a status reply in full.
std::string reply_text(std::string_view reply);

// The printer's job status reply in words.
// REQUIRES: a job status reply in full.
std::string job_status_text(std::string_view reply);
