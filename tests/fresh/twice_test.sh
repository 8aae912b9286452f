#!/bin/bash
# velmoctl keep-fresh twice on one queue: neither takes the other's command jobs for prints.
set -eu
# shellcheck source=tests/fresh/ring.sh
. "$(dirname "$0")/ring.sh"

# The last queue is the one that is waited for: it is tended after the other, so that what that was
# asked too many shows by then.
add_queues photo clock
fresh_start --settle 0.2 --idle 0 photo clock
other=$fresh_pid
on_exit "end_child $other; fresh_stop; scheduler_stop; printer_stop; rm -rf '$work'"
fresh_start --settle 0.2 --idle 0 photo clock
for queue in photo clock; do
  wait_asked "$queue" 2
  wait_no_jobs "$queue"
done

print photo
wait_asked photo 4
wait_message photo 'Prints Remaining = 349 / 700'
wait_no_jobs photo
for asks in 4 6; do
  print clock
  wait_asked clock "$asks" # 15 seconds after those before
  wait_no_jobs clock
done
expect 'one print is asked for once by each' "$(count_asks photo)" 4
fresh_stop
expect 'a signal ends it' "$fresh_status" 0
expect_end
