#!/bin/bash
# velmoctl keep-fresh: queues that are stopped, reject jobs, are detached, or are made again.
set -eu
# shellcheck source=tests/fresh/ring.sh
. "$(dirname "$0")/ring.sh"

add_queues stopped rejecting detached again refused caught usual member
scheduler_client lpadmin -p member -c class -E
scheduler_client cupsaccept class
scheduler_client cupsenable class
scheduler_add_queue busy "$NOBODY"
scheduler_client lpadmin -p busy -c others -E
scheduler_client cupsaccept others
scheduler_client cupsenable others
print others
scheduler_client cupsdisable -r 'out for lunch' stopped
scheduler_client cupsreject rejecting
grep -v '^[*]cups\(Commands\|Filter\)' "$root/scripts/lib/scheduler/velmo-minimal.ppd" >"$work/bare.ppd"
scheduler_add_queue detached "$(printer_uri)" "$work/bare.ppd"
scheduler_client lpadmin -p refused -u "deny:$(id -un)" 2>/dev/null
scheduler_client lpadmin -x again
wait_processing busy
fresh_start --settle 0.2 --idle 0 busy stopped rejecting detached again refused class member caught usual
wait_asked usual 1
for queue in stopped rejecting detached again; do
  expect "$queue: it is not asked" "$(count_asks "$queue")" 0
done
expect_that 'a stopped queue is told' log_has 'stopped: is stopped (out for lunch)'
expect_that 'a queue that rejects is told' log_has 'rejecting: rejects jobs'
expect_that 'a queue that is not attached is told' log_has 'detached: is not attached'
expect_that 'a queue that is not there is told' log_has 'again: there is no such queue'
expect_that 'a class is told' log_has 'class: is a class; name the queues in it'
expect_that 'a queue that refuses us is told, with our name' \
  log_has "refused: its printer is not asked: the scheduler does not let the user $(id -un)"
expect_that 'and what to do' log_has "(Not allowed to print.); a queue's list of users is changed by lpadmin -u"

# What was owed is asked as soon as it can be.
scheduler_client cupsenable stopped
scheduler_client cupsaccept rejecting
add_queues detached again
scheduler_client lpadmin -p refused -u allow:all 2>/dev/null
for queue in stopped rejecting detached again refused; do wait_asked "$queue" 1; done

# --- a print that a class has given to a queue
wait_asked member 1
wait_no_jobs member
print class
wait_asked member 2
wait_message member 'Prints Remaining = 349 / 700'
expect 'a class is not asked' "$(count_asks class)" 0
expect 'a queue that prints for a class is not asked' "$(count_asks busy)" 0

# --- a pause that catches our job
wait_no_jobs caught
wait_no_jobs usual
printer_tell silent on
wait_asked caught 1
print caught
print usual
wait_asked caught 2
wait_processing caught
scheduler_client cupsdisable caught
wait_no_jobs caught
expect 'a job that a pause has caught is taken back' "$(jobs_of caught)" 0
printer_tell silent off
scheduler_client cupsenable caught
wait_asked caught 3
wait_message caught 'Prints Remaining = 347 / 700'

# --- a queue that is deleted and made again
wait_no_jobs usual
asks=$(count_asks usual)
scheduler_client lpadmin -x usual
wait_log 'usual: there is no such queue'
add_queues usual
wait_asked usual $((asks + 1))
for queue in stopped rejecting detached again caught usual; do
  wait_no_jobs "$queue"
  expect "$queue: one job at a time" "$(most_asks_at_once "$queue")" 1
done
fresh_stop
expect_end
