// How a PPD file would change, as diff -u shows it.
#pragma once

#include <string>
#include <string_view>

std::string ppd_diff(std::string_view queue, std::string_view now, std::string_view then);
