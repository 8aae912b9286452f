#!/bin/bash
# A queue shows what the printer last reported: ribbon level, name and message, and the
# printer's error as a state reason, added when it appears and removed when it is gone; and
# that the printer gives no usable answer, until it answers again. ReportStatus changes the
# reasons only, ReportLevels the markers and the reasons, any other directive nothing.
set -eu
# shellcheck source-path=SCRIPTDIR/../.. source=tests/scheduler/ring.sh
. "$(dirname "$0")/ring.sh"

printer_start "$SIMULATOR"
scheduler_start "$FILTER"
scheduler_add_queue photo "$(printer_uri)"

# One job per line, in this order: each begins with what the one before left behind.
# Orders to the printer; directives, both of ours when there are none; what the queue shows
# afterwards: level, message, name, reasons.
while IFS=';' read -r title orders directives level message name reasons; do
  tell_printer "$orders"
  # shellcheck disable=SC2086 # a list of directives
  run_job ${directives:-ReportLevels ReportStatus}
  expect_queue "$title" "$level" "$message" "$name" "$reasons"
done <<'END'
neither of the two directives;error 06 02 02;Clean ReportNothing;;;;none
status only;;ReportStatus;;;;com.velmo-error0001
levels, and the reasons with them;error 01 06 06;ReportLevels;50;Prints Remaining = 350 / 700;Ribbon Type: 13x18(5x7″);com.velmo-error0020
status only, in lower case, leaves the level;remaining 7, error 0d 08 07;reportstatus;50;Prints Remaining = 350 / 700;Ribbon Type: 13x18(5x7″);com.velmo-error0021
levels in upper case;error 00 00 00;REPORTLEVELS;1;Prints Remaining = 7 / 700;Ribbon Type: 13x18(5x7″);none
neither of the two leaves all as it was;error 06 02 02;Report;1;Prints Remaining = 7 / 700;Ribbon Type: 13x18(5x7″);none
a silent printer;silent on;;-2; ;Ribbon Type: 00;com.velmo-error0023
answers again;silent off, remaining 350;;50;Prints Remaining = 350 / 700;Ribbon Type: 13x18(5x7″);com.velmo-error0001
one byte short, asked for its status only;reply-length 191;ReportStatus;50;Prints Remaining = 350 / 700;Ribbon Type: 13x18(5x7″);com.velmo-error0023
one byte short;;ReportLevels;-2; ;Ribbon Type: 00;com.velmo-error0023
a reply in two pieces;error 00 00 00, reply-length 192, fragments 100,92, delay 50, remaining 70;ReportLevels;10;Prints Remaining = 70 / 700;Ribbon Type: 13x18(5x7″);none
good;remaining 350, fragments whole, delay 0;;50;Prints Remaining = 350 / 700;Ribbon Type: 13x18(5x7″);none
an error;error 06 02 02;;50;Prints Remaining = 350 / 700;Ribbon Type: 13x18(5x7″);com.velmo-error0001
another error, of a shared keyword;error 3d 0a 0f;;50;Prints Remaining = 350 / 700;Ribbon Type: 13x18(5x7″);com.velmo-error0014
an error without a keyword of its own;error 11 22 33;;50;Prints Remaining = 350 / 700;Ribbon Type: 13x18(5x7″);com.velmo-error0023
ribbon exhausted, which hides the error;remaining 0;;0;Prints Remaining = 0 / 700;Ribbon Type: 13x18(5x7″);com.velmo-error0005
new ribbon, error still there;remaining 699;;99;Prints Remaining = 699 / 700;Ribbon Type: 13x18(5x7″);com.velmo-error0023
recovered;error 00 00 00;;99;Prints Remaining = 699 / 700;Ribbon Type: 13x18(5x7″);none
more left than the ribbon holds;remaining 800;;114;Prints Remaining = 800 / 700;Ribbon Type: 13x18(5x7″);none
count of prints unknown;remaining 65535;;-1; ;Ribbon Type: 13x18(5x7″);none
capacity unknown;remaining 350, total 65535;;-1; ;Ribbon Type: 13x18(5x7″);none
no capacity;total 0;;-1; ;Ribbon Type: 13x18(5x7″);none
the other ribbon;total 400, remaining 133, ink-sheet 8f;;33;Prints Remaining = 133 / 400;Ribbon Type: 15x20(6x8″);none
a ribbon without a name;ink-sheet 0a;;33;Prints Remaining = 133 / 400;Ribbon Type: 0a;none
no ribbon type;ink-sheet ff;;33;Prints Remaining = 133 / 400; ;none
END
finish
