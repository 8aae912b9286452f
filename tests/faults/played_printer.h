// Backend and printer, played inside the filter's own process: they move when it waits.
#pragma once

#include <string>

#include "tests/oracle/status_reply.h"

// The replies to the status queries, in the order in which these reach the printer: one of a
// sleeping printer, one of a good one, and one with an error code that no table knows, which
// comes in two pieces.
StatusReply status_reply(std::size_t number);
inline constexpr std::size_t CUT = 100;  // length of the first piece of the third reply

std::string job_status_reply();

// Takes descriptors 3 and 4 for the channels; `device` is the file behind standard output.
void play_printer(int device);

// The backend answers the last request that it has got and not answered.
void answer_request();

// The printer sends what it has to say to the last query that it has got.
void send_reply();

// Gives back what the printer holds for a reply that was not fetched.
void end_play();
