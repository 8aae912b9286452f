#!/bin/bash
# velmoctl keep-fresh: --delay and --idle, and a printer that does not answer.
set -eu
# shellcheck source=tests/fresh/ring.sh
. "$(dirname "$0")/ring.sh"

for number in nan inf -1 1e3 1.2.3; do
  expect_that "$number is no time" not "$VELMOCTL" keep-fresh --idle "$number" photo
done

# --- a printer that does not answer is tried again, and nothing else has to happen
printer_tell close-after-wake-up on
add_queues photo late
fresh_start --settle 0.2 --idle 0 photo
wait_asked photo 1
gone() { [[ $(scheduler_printer_attribute photo marker-levels) == -2 ]]; }
wait_for gone || give_up 'a printer that does not answer' 'a level' -2
wait_asked photo 2
wait_no_jobs photo
printer_tell close-after-wake-up off
wait_asked photo 3
wait_message photo 'Prints Remaining = 350 / 700'
mapfile -t asks < <(asks_of photo)
expect_that 'after 5 seconds' test $(($(created "${asks[1]}") - $(created "${asks[0]}"))) -ge 5
expect_that 'and after 15' test $(($(created "${asks[2]}") - $(created "${asks[1]}"))) -ge 15
fresh_stop

# --- a printer that counts late is asked late
fresh_start --settle 0.2 --idle 0.3 --delay 17 photo late
wait_asked photo 4
wait_asked late 1
wait_no_jobs late
before=$(date +%s%N)
print late
wait_asked late 2
expect_that 'an ask waits for the delay' test $(($(date +%s%N) - before)) -ge 17000000000
wait_message late 'Prints Remaining = 349 / 700'

# --- without a print, at the idle pace
wait_asked photo 5
mapfile -t asks < <(asks_of photo)
expect_that 'an idle queue is asked after the idle time' \
  test $(($(created "${asks[4]}") - $(created "${asks[3]}"))) -ge 18
fresh_stop
expect_end
