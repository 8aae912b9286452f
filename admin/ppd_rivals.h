// The lines of a PPD file that would win over those of our block.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "admin/ppd_records.h"

// The records that have to give way to these lines at the end of the file, by their place and
// ascending: every filter that gets command jobs instead of ours, every other list of
// commands, every other text for a keyword that is given one.
// REQUIRES: the block lists our commands and names our filter in the form that counts in `plain`.
std::vector<std::size_t> ppd_rivals(std::vector<PpdRecord> const& plain,
                                    std::vector<std::string> const& block);
