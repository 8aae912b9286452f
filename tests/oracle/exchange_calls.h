// The calls of an exchange with the printer as a fake world notes them between the messages.
#pragma once

#include <string>

inline std::string const FLUSH_CALL = "> fflush(stdout)\n";
inline std::string const DRAIN_CALL = "> cupsSideChannelDoRequest(2, room for 512, 5.000 s)\n";

std::string write_call(std::string const& command);
std::string read_call(std::size_t room);

// The whole of a status query that this reply answers in one piece.
std::string status_query_with_calls(std::string const& reply);
// One of which `rest` follows the write of its command.
std::string failed_status_query_with_calls(std::string const& rest);
