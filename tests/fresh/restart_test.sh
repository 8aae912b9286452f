#!/bin/bash
# velmoctl keep-fresh: a scheduler that has no room for its subscription, and that is restarted.
set -eu
# shellcheck source=tests/fresh/ring.sh
. "$(dirname "$0")/ring.sh"

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
wait_log 'hears the scheduler again'
wait_asked photo 2
wait_message photo 'Prints Remaining = 349 / 700'

# --- a scheduler that is restarted, with a print while nobody listens
wait_no_jobs photo
kill -STOP "$fresh_pid"
restart 'MaxSubscriptions 100'
print photo
wait_no_jobs photo
kill -CONT "$fresh_pid"
wait_asked photo 3
wait_message photo 'Prints Remaining = 348 / 700'

# --- one that is killed, and is away for a while
wait_no_jobs photo
kill -KILL "$scheduler_pid"
end_child "$scheduler_pid"
wait_log 'cannot be reached; it is waited for'
run_scheduler
wait_asked photo 4
wait_no_jobs photo
print photo
wait_asked photo 5
wait_message photo 'Prints Remaining = 347 / 700'

# --- one that hangs: a signal ends keep-fresh all the same
kill -STOP "$scheduler_pid"
sleep 1 # by then it waits for an answer
kill "$fresh_pid"
ended() { ! kill -0 "$fresh_pid" 2>/dev/null; }
wait_for ended || give_up 'keep-fresh before a scheduler that hangs' 'goes on' 'ends'
kill -CONT "$scheduler_pid"

expect_end
