#!/bin/bash
# velmoctl keep-fresh: how long a queue is left in peace if nothing is said, and steady printing.
set -eu
# shellcheck source=tests/fresh/ring.sh
. "$(dirname "$0")/ring.sh"

# --- as long as suits the device
add_queues network
scheduler_add_queue usb usb://Velmo/None
begin=$(date +%s)
fresh_start --idle 0 network usb
wait_asked usb 1
wait_asked network 1
expect_that 'over the network: 3 seconds' test $(($(created "$(asks_of network)") - begin)) -ge 3
expect_that 'over USB: 15 seconds' test $(($(created "$(asks_of usb)") - begin)) -ge 15
fresh_stop

# --- a queue that is never quiet for long enough
restart 'MaxEvents 1000'
add_queues steady
scheduler_client cupsdisable steady
for _ in {1..30}; do print steady; done
fresh_start --idle 0 --settle 100000 steady
wait_log 'steady: is stopped'
scheduler_client cupsenable steady
wait_asked steady 1
wait_no_jobs steady
remaining=$(scheduler_printer_attribute steady marker-message)
remaining=${remaining#'Prints Remaining = '}
expect_that "after some 25 of 30 prints: ${remaining% /*} remain" test "${remaining% /*}" -le 325
fresh_stop
expect_end
