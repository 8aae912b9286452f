// What a status reply says, and everything that is told of it, written a second time.
#pragma once

#include <string>
#include <string_view>

#include "tests/oracle/levels.h"

struct Status {
  unsigned memory;
  unsigned power;
  unsigned mech;   // both bytes, the first one highest
  unsigned error;  // three bytes, the first one highest
  Ribbon ribbon;
};

// Reads no further than byte 151.
Status read_status(std::string_view reply);

bool is_awake(Status const& status);
bool is_mech_good(Status const& status);
bool is_memory_free(Status const& status);

// The error code of the state that is reported, which an exhausted ribbon replaces.
unsigned state_code(Status const& status);

// The status as the log writes it.
std::string info_text(Status const& status);

// The same of a job status reply: its four bytes, and whether they say ready.
std::string job_text(std::string_view reply);
bool is_job_ready(std::string_view reply);

// All messages of the two reports.
void append_state_report(std::string& text, Status const& status);
void append_ribbon_report(std::string& text, Status const& status);
