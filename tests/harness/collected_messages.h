// What the product writes to standard error, kept in memory instead.
#pragma once

#include <string>

// The messages since the string was last cleared. Linked with --wrap=writev: millions of
// reports a second cannot afford a call to the kernel for each line.
std::string& collected_messages();
