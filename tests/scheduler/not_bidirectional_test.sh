#!/bin/bash
# A backend that cannot carry the printer's answers: ReportStatus says that the printer's
# state is unavailable, ReportLevels that its levels are, and only that; nobody is asked.
set -eu
# shellcheck source-path=SCRIPTDIR/../.. source=tests/scheduler/ring.sh
. "$(dirname "$0")/ring.sh"

printer_start "$SIMULATOR" --error '06 02 02'
scheduler_start "$FILTER"
scheduler_install backend "$ONEWAY"

# expect_logged TITLE STATUS: what the log holds of a job that cannot ask the printer.
expect_logged() {
  expect "$1: the line about the connection" "$(scheduler_job_log | grep '^Unable to retrieve')" \
    "Unable to retrieve supply status from printer - nobidirectional I/O available! $2"
  expect "$1: what goes to the printer" "$(scheduler_job_log | sed -n 's/^oneway prints //p' | paste -sd ' ')" \
    '1b 45 57 55'
}

while IFS=';' read -r uri status; do
  scheduler_add_queue photo "$(printer_uri)"
  run_job ReportLevels
  expect_queue "before $uri" 50 'Prints Remaining = 350 / 700' 'Ribbon Type: 13x18(5x7″)' com.velmo-error0001

  # Only the URI: with a PPD, the scheduler would forget the reasons.
  scheduler_client lpadmin -p photo -v "$uri"
  run_job ReportLevels
  expect_queue "$uri, levels" -2 ' ' 'Ribbon Type: 00' com.velmo-error0001
  expect_logged "$uri, levels" "$status"

  run_job ReportStatus
  expect_queue "$uri, status" -2 ' ' 'Ribbon Type: 00' com.velmo-error0023
  expect_logged "$uri, status" "$status"
done <<'END'
oneway:/no;CUPS_SC_STATUS_OK(1)
oneway:/unknown;CUPS_SC_STATUS_NOT_IMPLEMENTED(7)
END
finish
