// The listing of a raster page header, told a second time as a table.
#pragma once

#include <cups/raster.h>

#include <string>

std::string raster_listing(cups_page_header_t const& header);

// A value of one of the header's enumerations by its name, or by type and number.
std::string raster_name(std::string const& type, int value);
