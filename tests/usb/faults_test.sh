#!/bin/bash
# Over USB, what goes wrong with the connection: a printer that cannot answer, is not there, goes
# away, stalls or takes nothing, and a backend that is killed.
# shellcheck disable=SC2317 # the cases are run by their names
set -eu
# shellcheck source-path=SCRIPTDIR/../.. source=tests/usb/ring.sh
. "$(dirname "$0")/ring.sh"

case_one_way() {
  printer --one-way
  send ReportLevels ReportStatus
  expect_job 'an interface for one way' "$NO_ANSWER" 'one-way(1) wake-up ReportLevels ReportStatus'
  expect_end_of_job 'an interface for one way' completed
}

# The backend says that answers can be read, and reads none.
case_unidir() {
  printer
  usb_quirk "$serial" unidir
  send ReportLevels ReportStatus
  expect_job 'the quirk unidir' "$NO_ANSWER" "$FAILED_BOTH"
  expect_end_of_job 'the quirk unidir' completed
}

# The filter's first question is not answered, so it asks the printer nothing; the job stays.
case_absent() {
  printer
  tell unplug
  send ReportLevels
  expect_job 'no printer' '-2;  ; Ribbon Type: 00; none' 'one-way(3) wake-up ReportLevels'
  expect_that 'no printer: the job stays' not job_has_ended
  scheduler_client cancel "$queue-$scheduler_job"
  expect_state 'no printer: the job cancelled' canceled
  tell plug
  job_is_right 'no printer, and then one'
}

case_plugged_in_late() {
  printer
  tell unplug
  send ReportLevels ReportStatus
  wait_logged 'Waiting for printer to become available'
  tell plug
  expect_job 'plugged in late' "$GOOD" "$ASKED_BOTH"
  expect_end_of_job 'plugged in late' completed
}

unplugged_at() {
  printer
  tell "at $1 unplug"
  send ReportLevels
  expect_shows "unplugged at the $1" "$NO_ANSWER"
  expect_end_of_job "unplugged at the $1" aborted
  tell plug
  job_is_right "unplugged at the $1, and plugged in again"
}
case_unplugged_at_wake_up() { unplugged_at wake-up; }
case_unplugged_at_query() { unplugged_at status-query; }

# The error policy retry-job keeps a job whose backend has failed, for five minutes if nobody sends
# it on.
case_retried() {
  printer
  scheduler_client lpadmin -p "$queue" -o printer-error-policy=retry-job
  tell 'at status-query unplug'
  send ReportLevels ReportStatus
  expect_shows 'unplugged, and retried' "$NO_ANSWER"
  wait_logged 'Job held for 300 seconds since it could not be sent.'
  tell plug
  scheduler_client lp -i "$queue-$scheduler_job" -H immediate
  wait_logged 'commandtovelmo) exited with no errors.' 2
  wait_for shows_that "$GOOD" ||
    give_up 'plugged in again, and retried: what the queue shows' "$(shows)" "$GOOD"
  expect_end_of_job 'plugged in again, and retried' completed
}

case_stall_out_once() {
  printer
  tell 'stall-out once'
  job_is_right 'the first write stalls'
  expect_part 'the first write stalls: the log' "$(scheduler_job_log)" 'Got USB pipe stalled during write.'
}

case_stall_out() {
  printer
  tell 'stall-out on'
  send ReportLevels
  expect_shows 'all writes stall' "$NO_ANSWER"
  expect_end_of_job 'all writes stall' aborted
  tell 'stall-out off'
  job_is_right 'writes stall no more'
}

case_stall_in_once() {
  printer
  tell 'at status-query stall-in once'
  job_is_right 'one read stalls'
  expect_part 'one read stalls: the log' "$(scheduler_job_log)" 'Got USB pipe stalled during read.'
}

case_stall_in() {
  printer
  tell 'at status-query stall-in on'
  send ReportLevels
  expect_job 'all reads stall' "$NO_ANSWER" "$NOTHING_CAME"
  expect_end_of_job 'all reads stall' completed
  tell 'unplug, stall-in off, plug'
  job_is_right 'reads stall no more'
}

# Nobody helps this one with an empty packet: the backend waits to its own end.
case_last_wait() {
  printer
  send ReportLevels
  expect_job 'the wait at the end' "$GOOD" 'wake-up ReportLevels asks 192 bytes'
  wait_logged 'Waiting for read thread to exit...'
  wait_logged 'Read thread still active, aborting the pending read...'
  expect_state 'the wait at the end' completed
}

case_nak() {
  printer
  tell 'at wake-up nak-out 10'
  job_is_right 'nothing is taken for 10 seconds'
  expect 'nothing is taken for 10 seconds: the printer' \
    "$(grep -m 3 -E '^(at last|takes|heard)' "$printer_dir/heard")" \
    $'at last: now: nak-out 10\ntakes what waited\nheard wake-up'
}

# With so many questions the backend does not end by itself before it is killed.
case_backend_killed() {
  local backend
  printer --silent
  send "${MANY[@]}"
  wait_heard 'heard status query'
  backend=$(scheduler_job_log | sed -n 's,^Started backend .*/usb (PID \([0-9]*\))$,\1,p')
  kill -KILL "$backend"
  wait_logged "PID $backend ("
  expect_part 'the backend killed: its end' "$(scheduler_job_log | grep -F "PID $backend (" | tail -n 1)" \
    '/usb) was terminated normally with signal 9.'
  expect_shows 'the backend killed' "$NO_ANSWER"
  expect_state 'the backend killed: the job' completed # for the scheduler, no error
  tell 'silent off'
  job_is_right 'the backend killed, and the next'
}

run_cases absent nak plugged_in_late unplugged_at_wake_up unplugged_at_query retried stall_out \
  stall_in backend_killed last_wait one_way unidir stall_out_once stall_in_once
