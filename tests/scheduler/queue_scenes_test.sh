#!/bin/bash
# A queue shows what the printer last reported: ribbon level, name and message, and the
# printer's error as a state reason, added when it appears and removed when it is gone.
set -eu
# shellcheck source-path=SCRIPTDIR/../.. source=tests/scheduler/ring.sh
. "$(dirname "$0")/ring.sh"

printer_start "$SIMULATOR"
scheduler_start "$FILTER"
scheduler_add_queue photo "$(printer_uri)"

# One job per line, in this order: each begins with what the one before left behind.
# Orders to the printer; what the queue shows afterwards: level, message, name, reasons.
while IFS=';' read -r title orders level message name reasons; do
  tell_printer "$orders"
  run_job ReportLevels ReportStatus
  expect_queue "$title" "$level" "$message" "$name" "$reasons"
done <<'END'
good;error 00 00 00;50;Prints Remaining = 350 / 700;Ribbon Type: 13x18(5x7″);none
an error;error 06 02 02;50;Prints Remaining = 350 / 700;Ribbon Type: 13x18(5x7″);com.velmo-error0001
another error, of a shared keyword;error 3d 0a 0f;50;Prints Remaining = 350 / 700;Ribbon Type: 13x18(5x7″);com.velmo-error0014
an error without a keyword of its own;error 11 22 33;50;Prints Remaining = 350 / 700;Ribbon Type: 13x18(5x7″);com.velmo-error0023
ribbon exhausted, which hides the error;remaining 0;0;Prints Remaining = 0 / 700;Ribbon Type: 13x18(5x7″);com.velmo-error0005
new ribbon, error still there;remaining 699;99;Prints Remaining = 699 / 700;Ribbon Type: 13x18(5x7″);com.velmo-error0023
recovered;error 00 00 00;99;Prints Remaining = 699 / 700;Ribbon Type: 13x18(5x7″);none
more left than the ribbon holds;remaining 800;114;Prints Remaining = 800 / 700;Ribbon Type: 13x18(5x7″);none
count of prints unknown;remaining 65535;-1; ;Ribbon Type: 13x18(5x7″);none
capacity unknown;remaining 350, total 65535;-1; ;Ribbon Type: 13x18(5x7″);none
no capacity;total 0;-1; ;Ribbon Type: 13x18(5x7″);none
the other ribbon;total 400, remaining 133, ink-sheet 8f;33;Prints Remaining = 133 / 400;Ribbon Type: 15x20(6x8″);none
a ribbon without a name;ink-sheet 0a;33;Prints Remaining = 133 / 400;Ribbon Type: 0a;none
no ribbon type;ink-sheet ff;33;Prints Remaining = 133 / 400; ;none
END
finish
