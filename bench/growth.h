// How the cost grows: with the directives of a job, and with the printers at once.
#pragma once

#include <string>

#include "bench/bars.h"

// Each returns its table and writes what is to be drawn to `file`.
std::string measure_directives(unsigned rounds, std::string const& file, Bars& bars);
std::string measure_printers(unsigned rounds, std::string const& file, Bars& bars);
