// Readable listing of a raster page header (version 1, cups/raster.h).
#pragma once

#include <cups/raster.h>

// Writes the header's fields to standard error, 43 lines, one write each.
// REQUIRES: a complete header, its four texts ended by a zero byte.
void dump(cups_page_header_t const* header);

// The CUPS constant's name for a value. A value without a name is written as, for
// example, "cups_cut_e(-1)" into a buffer that the next such value of the same
// enumeration overwrites; a name lives as long as the program.
//
// Raster data comes from outside: any 32-bit number may stand in these fields.
char const* to_string(cups_adv_e value);
char const* to_string(cups_bool_e value);
char const* to_string(cups_cspace_e value);
char const* to_string(cups_cut_e value);
char const* to_string(cups_edge_e value);
char const* to_string(cups_jog_e value);
char const* to_string(cups_order_e value);
char const* to_string(cups_orient_e value);
