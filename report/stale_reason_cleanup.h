// Clears whatever printer-state-reasons the scheduler still holds.
#pragma once

// Writes "STATE: -" to standard error for every reason that the scheduler reports for the
// default destination, whoever set it; for a healthy queue that is the reason "none".
// Nothing is removed without a default destination or without the option that lists its
// reasons; an empty list gives one line for "(null)".
//
// libcups picks scheduler and default destination, and it alone looks for them: in the
// environment (CUPS_SERVER, LPDEST, PRINTER) and in its client.conf and lpoptions files.
void clean_printer_state();
