#!/bin/bash
# What each directive changes in a queue: ReportStatus the state reasons only, ReportLevels
# the markers and the reasons, any other nothing.
set -eu
# shellcheck source-path=SCRIPTDIR/../.. source=tests/scheduler/ring.sh
. "$(dirname "$0")/ring.sh"

printer_start "$SIMULATOR" --error '06 02 02'
scheduler_start "$FILTER"
scheduler_add_queue photo "$(printer_uri)"

# One job per line, in this order: orders to the printer; its directives; the level and the reasons that the queue
# shows afterwards. A queue of which no levels were reported shows no level.
while IFS=';' read -r title orders directives level reasons; do
  tell_printer "$orders"
  # shellcheck disable=SC2086 # a list of directives
  run_job $directives
  expect "$title: the level" "$(scheduler_printer_attribute photo marker-levels)" "$level"
  expect "$title: the reasons" "$(scheduler_printer_attribute photo printer-state-reasons)" "$reasons"
done <<'END'
neither of the two;;Clean ReportNothing;;none
status only;;ReportStatus;;com.velmo-error0001
levels, and the reasons with them;error 01 06 06;ReportLevels;50;com.velmo-error0020
status only, in lower case, leaves the level;remaining 7, error 0d 08 07;reportstatus;50;com.velmo-error0021
levels in upper case;error 00 00 00;REPORTLEVELS;1;none
neither of the two leaves all as it was;error 06 02 02;Report;1;none
END
finish
