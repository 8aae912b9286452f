// The log of a program that stays running: lines that a service manager sorts by their weight.
#pragma once

#include <string_view>

enum class Weight { Warning = 4, Notice = 5, Info = 6 };  // as syslog counts them

// Writes the line "<WEIGHT>SUBJECT: TEXT", or without a subject "<WEIGHT>TEXT", to standard error.
void write_journal(Weight weight, std::string_view subject, std::string_view text);
