#!/bin/bash
# velmoctl keep-fresh: a scheduler that has no room for its subscription, and that is restarted.
set -eu
# shellcheck source=tests/fresh/ring.sh
. "$(dirname "$0")/ring.sh"

subscribe() {
  scheduler_client ipptool -t "$(scheduler_uri '')" "$root/tests/fresh/create-subscription.test" >/dev/null
}
unsubscribe() {
  scheduler_client ipptool -t -d "id=$1" "$(scheduler_uri '')" \
    "$root/tests/fresh/cancel-subscription.test" >/dev/null
}

# --- no room for a subscription: the start's ask all the same
restart 'MaxSubscriptions 1'
add_queues photo
subscribe
foreign=$(subscriptions)
fresh_start --settle 0.2 --idle 0 photo
wait_asked photo 1
expect 'no room: the start is asked for' "$(count_asks photo)" 1
expect_that 'no room: said so' log_has 'prints are not noticed'
wait_no_jobs photo
print photo
unsubscribe "$foreign"
wait_until "$LONG" log_has 'hears the scheduler again' || true
expect_that 'it is tried again' log_has 'hears the scheduler again'
wait_asked photo 2
wait_message photo 'Prints Remaining = 349 / 700'

# --- a scheduler that is restarted, with a print while nobody listens
wait_no_jobs photo
kill -STOP "$fresh_pid"
restart
print photo
wait_no_jobs photo
kill -CONT "$fresh_pid"
wait_asked photo 3
wait_message photo 'Prints Remaining = 348 / 700'

fresh_stop
expect_end
