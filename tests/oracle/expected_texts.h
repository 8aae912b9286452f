// The longer texts that tests expect, composed by the rules a second time.
#pragma once

#include <string>

// The dump of these bytes: a size line, then lines of at most 16 bytes.
std::string expected_dump(std::string const& label, std::string const& bytes);

// What a FakeWorld notes of one status query that this reply answers in one piece.
std::string expected_status_query(std::string const& reply);

// All "STATE:" lines when this keyword number is the current reason; 0 for none.
std::string expected_states(int current);
