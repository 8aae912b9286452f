// What velmoctl says to the person in front of it.
#pragma once

#include <string>
#include <string_view>

// A standard descriptor that is closed would become that of the scheduler's connection, and what
// is said would be sent there. Fills each such gap with one that can be neither read nor written
// as it should.
void fill_standard_descriptors();

// Text from outside as it may be shown: control characters, which could play tricks with a
// terminal, become question marks.
std::string printable(std::string_view text);

// A word that a shell takes as it is.
std::string shell_quoted(std::string_view word);

// Writes a line to standard output.
void say(std::string_view text);

// Writes the line "velmoctl: SUBJECT: TEXT", or without a subject "velmoctl: TEXT", to
// standard error.
void complain(std::string_view subject, std::string_view text);

// Whether everything said so far has reached standard output; complains if not, once.
bool is_output_written();
