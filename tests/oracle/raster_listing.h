// The listing of a raster page header, written a second time as a table.
#pragma once

#include <cups/raster.h>

#include <string>

std::string expected_listing(cups_page_header_t const& header);
