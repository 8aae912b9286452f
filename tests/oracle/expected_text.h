// The texts that a run must leave, composed from the rules for its steps.
#pragma once

#include <string>
#include <vector>

#include "tests/oracle/status_reply.h"

// --- What stands on standard error ---

// `status` is a name and a number, for example "CUPS_SC_STATUS_TIMEOUT(3)".
std::string not_bidirectional_text(std::string const& status);
std::string failed_drain_text(std::string const& status);
// A status byte without a name. The library passes it on through a plain char, so a byte from
// 128 on is a negative number on the one processor and not on the other.
std::string unnamed_status(int byte);

std::string dump_text(std::string const& label, std::string const& bytes);

// `failure` is the line that a failed step leaves.
std::string wake_up_text(std::string const& failure = "");
std::string directive_text(std::string const& name, int line);

// One query inside its brackets.
std::string query_text(std::string const& reply, std::string const& failed_drain = "");
std::string failed_query_text(std::string const& failure, std::string const& failed_drain = "");

// The attempts of a directive between the brackets of the retry.
std::string attempt_text(std::string const& query, std::string const& info,
                         std::string const& wake_up);
std::string failed_attempt_text(std::string const& failed_query);
std::string retry_text(std::string const& attempts);

// A printer that is awake at once, and one that gives no usable reply.
std::string awake_text(StatusReply const& reply, std::string const& error_info = "GOOD");
std::string no_reply_text(std::string const& read_result, std::string const& failed_drain = "");

// `reason` is the four digits of the one reason that is added; empty when there is none.
std::string reasons_text(std::string const& reason = "");
inline std::string unavailable_reasons_text() { return reasons_text("0023"); }

std::string levels_report_text(std::string const& log, std::string const& level,
                               std::string const& message, std::string const& name);
std::string unavailable_levels_text();

// --- What the surroundings notice ---

std::string probe_events();
std::string wake_up_events();

// `reads` counts the reads of the reply that had to wait.
std::string query_events(int reads = 1);
std::string exit_event(int status);

std::string repeated(int times, std::string const& text);
