// What a run leaves on standard error and what its surroundings notice, step by step.
#pragma once

#include <string>

#include "tests/oracle/levels.h"
#include "tests/oracle/reasons.h"
#include "tests/oracle/status_reply.h"

// --- What stands on standard error ---

// A side channel's status by name and number, "CUPS_SC_STATUS_TIMEOUT(3)".
std::string side_channel_status_text(long status);
// That of an answer's status byte. The library passes it on through a plain char, so a byte from
// 128 on is a negative number on the one processor and not on the other.
std::string answered_status_text(int byte);
std::string not_bidirectional_text(std::string const& status);
std::string failed_drain_text(std::string const& status);
std::string failed_write_text(long result);
std::string failed_flush_text();
std::string failed_read_text(long result);

// Up to 655,360 bytes, whose offsets have a fifth digit of 9 at most.
std::string dump_text(std::string_view label, std::string_view bytes);

// What comes first and last in each of the functions that log their begin and their end.
std::string start_text(std::string const& function);
std::string end_text(std::string const& function);
std::string command_start_text(std::string const& function, std::string const& command);

// `failure` is the line that a failed step leaves.
std::string wake_up_text(std::string const& failure = "");
std::string directive_text(std::string const& name, long line);

// One query inside its brackets.
std::string query_text(std::string const& reply, std::string const& failed_drain = "");
std::string failed_query_text(std::string const& failure, std::string const& failed_drain = "");

// The attempts of a directive between the brackets of the retry; `wake_up` is the counter's text.
std::string attempt_text(std::string const& query, std::string const& info,
                         std::string const& wake_up);
std::string failed_attempt_text(std::string const& failed_query);
std::string retry_text(std::string const& attempts);
// Said after the 61st attempt that met a sleeping printer.
std::string retry_over_text();

// A printer that is awake at once, and one that gives no usable reply.
std::string awake_text(std::string const& reply, std::string const& failed_drain = "");
std::string awake_text(StatusReply const& reply, std::string const& failed_drain = "");
std::string no_reply_text(long read_result, std::string const& failed_drain = "");

// --- What the surroundings notice ---

std::string probe_events();
std::string wake_up_events();

// `reads` counts the reads of the reply that had to wait.
std::string query_events(int reads = 1);
std::string exit_event(int status);

std::string repeated(int times, std::string const& text);
