#!/bin/bash
# velmoctl keep-fresh: a subscription that is taken away, and one that overflows.
set -eu
# shellcheck source=tests/fresh/ring.sh
. "$(dirname "$0")/ring.sh"

is_subscribed() { [[ $(subscriptions) && $(subscriptions) != "${1-}" ]]; }

add_queues photo
fresh_start --settle 0.2 --idle 0 photo
wait_asked photo 1

# --- a subscription that somebody takes away
wait_no_jobs photo
old=$(subscriptions)
kill -STOP "$fresh_pid"
unsubscribe "$old"
print photo
wait_no_jobs photo
kill -CONT "$fresh_pid"
expect_that 'there is a new one' wait_for is_subscribed "$old"
wait_asked photo 2
wait_message photo 'Prints Remaining = 349 / 700'

# --- more events than the scheduler keeps
wait_no_jobs photo
scheduler_add_queue other "$NOBODY"
kill -STOP "$fresh_pid"
print photo
wait_no_jobs photo
for _ in {1..60}; do
  scheduler_client cupsdisable other
  scheduler_client cupsenable other
done
kill -CONT "$fresh_pid"
wait_asked photo 3
expect_that 'events went unseen' log_has 'events may have gone unseen' 2
wait_message photo 'Prints Remaining = 348 / 700'

fresh_stop
expect 'its subscription is gone' "$(subscriptions)" ''
expect_end
