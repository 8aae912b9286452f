// Whether CUPS can read a PPD file at all.
#pragma once

#include <string>

// Reads it with libcups' own reader. Returns why that fails; empty if it does not.
std::string ppd_fault(std::string const& ppd);
