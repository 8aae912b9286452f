// Clears whatever printer-state-reasons the scheduler still holds.
#pragma once

// Writes "STATE: -" to standard error for every reason that the scheduler reports for the
// default destination, whoever set it; for a healthy queue that is the reason "none".
// Without a default destination, or without reasons, nothing is removed.
//
// libcups picks scheduler and default destination, and it alone reads the environment for
// that: CUPS_SERVER and client.conf name the scheduler, LPDEST and PRINTER the default.
void clean_printer_state();
