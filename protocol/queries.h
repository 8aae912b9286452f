// What can be asked of the printer.
#pragma once

#include "protocol/job_status.h"
#include "protocol/printer_info.h"

// Asks for the printer's status once (at least 192 bytes of reply). Unavailable when the
// exchange fails.
PrinterInfo get_printer_info();

// Asks once a second until a reply says that the printer is awake, 61 times at most.
// Unavailable when an exchange fails, which is not retried, or when no reply said so.
PrinterInfo get_printer_info_retry();

// Asks for the job status once (at least 20 bytes of reply). Unavailable when the
// exchange fails.
JobStatus get_job_status();
