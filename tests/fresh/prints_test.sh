#!/bin/bash
# velmoctl keep-fresh: what is a print and what is none, and when it asks.
set -eu
# shellcheck source=tests/fresh/ring.sh
. "$(dirname "$0")/ring.sh"

# The last queue is the one that is waited for: it is tended after the others, so that what they
# were asked too many shows by then.
add_queues command cancelled second held print
scheduler_add_queue busy "$NOBODY"
print busy
print held -o job-hold-until=indefinite
fresh_start --settle 0.3 --idle 0 busy command cancelled second held HELD print
wait_asked print 1
wait_message print 'Prints Remaining = 350 / 700'
expect 'a held job is none that keeps from asking' "$(count_asks held)" 1

# Somebody else's command job, a job that was never begun, and a print that has the command file
# as its second document.
for queue in command cancelled second print; do wait_no_jobs "$queue"; done
command_job command
held_job=$(scheduler_client lp -d cancelled -o raw -o job-hold-until=indefinite "$work/picture")
held_job=${held_job#request id is }
scheduler_client cancel "${held_job%% *}"
printf '#CUPS-COMMAND\nReportLevels\n' >"$work/levels.cmd"
expect_that 'a job of two documents is taken' scheduler_client ipptool -t \
  -d "picture=$work/picture" -d "commands=$work/levels.cmd" "$(scheduler_uri printers/second)" \
  "$root/tests/fresh/two-documents.test"
wait_message second 'Prints Remaining = 349 / 700'
before=$(created "$(asks_of print)")
scheduler_client cupsdisable print # so that one waits while another is printed, however slow we are
for _ in 1 2 3; do print print; done
scheduler_client cupsenable print
wait_asked print 2
difference=$(($(created "$(asks_of print | sed -n 2p)") - before))
expect_that 'two asks are 15 seconds apart' test "$difference" -ge 15
wait_message print 'Prints Remaining = 346 / 700'
expect 'prints one after the other are one ask' "$(count_asks print)" 2
expect 'a queue that is named twice is one' "$(count_asks HELD)" 0
expect 'a command job of somebody else is no print' "$(count_asks command)" 1
expect 'a job that was not begun is no print' "$(count_asks cancelled)" 1
expect 'a print that brings its level is not asked for' "$(count_asks second)" 1
expect 'a queue that is not quiet is not asked' "$(count_asks busy)" 0
expect 'one job at a time' "$(most_asks_at_once print)" 1

fresh_stop
expect 'a signal ends it' "$fresh_status" 0
expect 'its subscription is gone' "$(subscriptions)" ''
expect_end
