#!/bin/bash
# A printer that gives no usable answer: the queue shows that the levels are unavailable and
# the reason for it, until the printer answers again.
set -eu
# shellcheck source-path=SCRIPTDIR/../.. source=tests/scheduler/ring.sh
. "$(dirname "$0")/ring.sh"

printer_start "$SIMULATOR" --silent --error '06 02 02'
scheduler_start "$FILTER"
scheduler_add_queue photo "$(printer_uri)"

run_job ReportLevels ReportStatus
expect_queue 'silent' -2 ' ' 'Ribbon Type: 00' com.velmo-error0023

printer_tell silent off
run_job ReportLevels ReportStatus
expect_queue 'answers again' 50 'Prints Remaining = 350 / 700' 'Ribbon Type: 13x18(5x7″)' com.velmo-error0001

printer_tell reply-length 191
run_job ReportStatus
expect_queue 'one byte short, asked for its status only' \
  50 'Prints Remaining = 350 / 700' 'Ribbon Type: 13x18(5x7″)' com.velmo-error0023

run_job ReportLevels
expect_queue 'one byte short' -2 ' ' 'Ribbon Type: 00' com.velmo-error0023
finish
