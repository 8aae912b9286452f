// Whether CUPS can read a PPD file at all.
#pragma once

#include <string>

// Reads it with libcups' own reader. Returns the line at which that fails; 0 if it does not.
int unreadable_ppd_line(std::string const& ppd);
