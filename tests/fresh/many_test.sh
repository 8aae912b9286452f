#!/bin/bash
# velmoctl keep-fresh for many queues: what its own asks bring about is not more than the scheduler
# keeps of events, or it would take each round of asks for prints that went unseen.
set -eu
# shellcheck source=tests/fresh/ring.sh
. "$(dirname "$0")/ring.sh"

queues=()
for i in {1..60}; do queues+=("photo$i"); done
add_queues "${queues[@]}"
fresh_start --settle 0.2 --idle 0 "${queues[@]}"
ASKS=': asks its printer, job '
wait_for log_has "$ASKS" 60 || give_up 'asks at the start' "$(log_count "$ASKS")" 60
for queue in "${queues[@]}"; do wait_no_jobs "$queue"; done
# 15 seconds after the last ask of the start.
print photo60
wait_asked photo60 2
wait_message photo60 'Prints Remaining = 349 / 700'
expect 'the start and a print are all that was asked for' "$(log_count "$ASKS")" 61
expect 'no events went unseen' "$(log_count 'may have gone unseen')" 0
fresh_stop
expect_end
