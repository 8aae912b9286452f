#!/bin/bash
# What the cleanup asks of a real scheduler: it removes the reasons that a real command job
# set, and copes with no default destination and with no scheduler at all.
set -eu
# shellcheck source-path=SCRIPTDIR/../.. source=tests/scheduler/ring.sh
. "$(dirname "$0")/ring.sh"

printer_start "$SIMULATOR" --error '06 02 02'
scheduler_start "$FILTER"
scheduler_add_queue photo "$(printer_uri)"

# expect_cleanup WHEN SAID [VARIABLE=VALUE]...: runs it as a client of the private scheduler.
expect_cleanup() {
  expect "the cleanup $1" "$(scheduler_client env "${@:3}" "$STALE_REASONS" 2>&1)" \
    "clean_printer_state() START"$'\n'"$2"$'\n'"clean_printer_state() END"
}
NOT_FOUND='DEBUG: Not found default(destination) printer.'

expect_cleanup 'without a default destination' "$NOT_FOUND"
expect_cleanup 'of a healthy queue' 'STATE: -none' PRINTER=photo
run_job ReportStatus
expect_cleanup 'after a printer error' 'STATE: -com.velmo-error0001' PRINTER=photo
scheduler_client lpadmin -d photo
expect_cleanup "of the scheduler's own default" 'STATE: -com.velmo-error0001'
expect_cleanup 'without a scheduler' "$NOT_FOUND" CUPS_SERVER="$scheduler_dir/clients/nobody"
finish
