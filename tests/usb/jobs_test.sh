#!/bin/bash
# Over USB, several jobs one behind the other: command jobs, prints before and behind them, and
# thirty command jobs in three queues at once.
# shellcheck disable=SC2317 # the cases are run by their names
set -eu
# shellcheck source-path=SCRIPTDIR/../.. source=tests/usb/ring.sh
. "$(dirname "$0")/ring.sh"

# send_jobs TIMES: queues so many jobs; their numbers are in $sent.
send_jobs() {
  local i
  sent=()
  for ((i = 0; i < $1; ++i)); do
    send ReportLevels ReportStatus
    sent+=("$scheduler_job")
  done
}

jobs_are_right() {
  printer
  send_jobs "$1"
  for scheduler_job in "${sent[@]}"; do
    expect_job "job $scheduler_job of $1" "$GOOD" "$ASKED_BOTH"
    expect_end_of_job "job $scheduler_job of $1" completed
  done
}

case_two() { jobs_are_right 2; }
case_ten() { jobs_are_right 10; }
case_ten_more() { jobs_are_right 10; }
case_another_ten() { jobs_are_right 10; }

print_picture() {
  local answer
  answer=$(echo 'a picture' | scheduler_client lp -d "$queue" -o raw)
  answer=${answer% (*}
  scheduler_job=${answer##*-}
}

# Each print takes one from the ribbon, so that a level tells how many came before it.
case_prints() {
  local title command print ribbon='Ribbon Type: 13x18(5x7″); none'
  printer --count-prints
  for title in 349 348; do
    print_picture
    wait_logged 'Waiting for read thread to exit'
    expect_end_of_job "a print before $title" completed
    send ReportLevels
    expect_job "$title left" "49; Prints Remaining = $title / 700; $ribbon" \
      'wake-up ReportLevels asks 192 bytes'
    command=$scheduler_job
    print_picture # waits behind the command job
    print=$scheduler_job
    scheduler_job=$command
    expect_end_of_job "$title left" completed
    scheduler_job=$print
    expect_end_of_job "a print behind $title" completed
    tell "remaining $title" # as before that print
  done
}

run_cases ten ten_more another_ten two prints
