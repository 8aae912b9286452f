// Names of the side channel's status codes, for the log.
#pragma once

#include <cups/sidechannel.h>

// Returns the CUPS constant's name for a status (cups/sidechannel.h: 0 to 7), and
// "UNKNOWN" for any other number. The text lives as long as the program.
//
// The library hands on the status byte of the backend's answer as a signed char, so
// numbers outside the enumeration, -128 to 127, do arrive here.
char const* to_string(cups_sc_status_e status);
