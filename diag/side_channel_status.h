// Names of the side channel's status codes, for the log.
#pragma once

#include <cups/sidechannel.h>

// Returns the CUPS constant's name for a status (cups/sidechannel.h: 0 to 7), and
// "UNKNOWN" for any other number. The text lives as long as the program.
//
// The library hands on the status byte of the backend's answer as a plain char, so numbers
// outside the enumeration do arrive here: the byte ff as -1 where char is signed, as on x86, and
// as 255 where it is not, as on Arm.
char const* to_string(cups_sc_status_e status);
