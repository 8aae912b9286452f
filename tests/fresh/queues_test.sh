#!/bin/bash
# velmoctl keep-fresh: queues that are stopped, reject jobs, are detached, or are made again.
set -eu
# shellcheck source=tests/fresh/ring.sh
. "$(dirname "$0")/ring.sh"

add_queues stopped rejecting detached again refused caught usual
scheduler_client cupsdisable -r 'out for lunch' stopped
scheduler_client cupsreject rejecting
grep -v '^[*]cups\(Commands\|Filter\)' "$root/scripts/lib/scheduler/velmo-minimal.ppd" >"$work/bare.ppd"
scheduler_add_queue detached "$(printer_uri)" "$work/bare.ppd"
scheduler_client lpadmin -p refused -u "deny:$(id -un)" 2>/dev/null
scheduler_client lpadmin -x again
fresh_start --settle 0.2 --idle 0 stopped rejecting detached again refused caught usual
wait_asked usual 1
for queue in stopped rejecting detached again; do
  expect "$queue: it is not asked" "$(count_asks "$queue")" 0
done
expect_that 'a stopped queue is told' log_has 'stopped: is stopped (out for lunch)'
expect_that 'a queue that rejects is told' log_has 'rejecting: rejects jobs'
expect_that 'a queue that is not attached is told' log_has 'detached: is not attached'
expect_that 'a queue that is not there is told' log_has 'again: there is no such queue'
expect_that 'a queue that refuses us is told, with our name' \
  log_has "refused: its printer is not asked: the scheduler does not let the user $(id -un)"

# What was owed is asked as soon as it can be.
scheduler_client cupsenable stopped
scheduler_client cupsaccept rejecting
add_queues detached again
scheduler_client lpadmin -p refused -u allow:all 2>/dev/null
for queue in stopped rejecting detached again refused; do wait_asked "$queue" 1; done

# --- a pause that catches our job
wait_no_jobs caught
wait_no_jobs usual
printer_tell silent on
wait_asked caught 1
print caught
print usual
wait_asked caught 2
processing() { [[ $(scheduler_printer_attribute "$1" printer-state) == processing ]]; }
wait_until "$LONG" processing caught
scheduler_client cupsdisable caught
wait_no_jobs caught
expect 'a job that a pause has caught is taken back' "$(jobs_of caught)" 0
printer_tell silent off
scheduler_client cupsenable caught
wait_asked caught 3
wait_message caught 'Prints Remaining = 348 / 700'

# --- a queue that is deleted and made again
wait_no_jobs usual
asks=$(count_asks usual)
scheduler_client lpadmin -x usual
wait_until "$LONG" log_has 'usual: there is no such queue' || true
expect_that 'a queue that is gone is told' log_has 'usual: there is no such queue'
add_queues usual
wait_asked usual $((asks + 1))
for queue in stopped rejecting detached again caught usual; do
  wait_no_jobs "$queue"
  expect "$queue: one job at a time" "$(most_asks_at_once "$queue")" 1
done
fresh_stop
expect_end
