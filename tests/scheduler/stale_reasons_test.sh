#!/bin/bash
# What the cleanup asks of a real scheduler: it removes the reasons that a real command job
# set, and copes with no default destination and with no scheduler at all.
set -eu
# shellcheck source-path=SCRIPTDIR/../.. source=tests/scheduler/ring.sh
. "$(dirname "$0")/ring.sh"

printer_start "$SIMULATOR" --error '06 02 02'
scheduler_start "$FILTER"
scheduler_add_queue photo "$(printer_uri)"

# cleanup [VARIABLE=VALUE]...: runs it as a client of the private scheduler.
cleanup() {
  scheduler_client env "$@" "$STALE_REASONS" 2>&1
}

BEGIN='clean_printer_state() START'
END='clean_printer_state() END'
NOT_FOUND='DEBUG: Not found default(destination) printer.'

expect 'the cleanup without a default destination' "$(cleanup)" "$BEGIN
$NOT_FOUND
$END"

expect 'the cleanup of a healthy queue' "$(cleanup PRINTER=photo)" "$BEGIN
STATE: -none
$END"

run_job ReportStatus
expect 'the cleanup after a printer error' "$(cleanup PRINTER=photo)" "$BEGIN
STATE: -com.velmo-error0001
$END"

scheduler_client lpadmin -d photo
expect 'the cleanup of the scheduler'\''s own default' "$(cleanup)" "$BEGIN
STATE: -com.velmo-error0001
$END"

expect 'the cleanup without a scheduler' "$(cleanup CUPS_SERVER="$scheduler_dir/clients/nobody")" "$BEGIN
$NOT_FOUND
$END"
finish
