// What the product writes to standard error, kept in memory instead.
#pragma once

#include <string>

// The messages since the string was last cleared, from the start of the program that links this:
// millions of reports a second cannot afford a call to the kernel for each line.
std::string& collected_messages();
