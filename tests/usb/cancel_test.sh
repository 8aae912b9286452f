#!/bin/bash
# Over USB, jobs that are cancelled in every state in which they stay for a while: each is cancelled
# at once, and the next job of the queue is right. Not here: an absent printer, which is a case of
# faults_test.sh, and states that end by themselves before anybody could cancel, such as unplugged.
# shellcheck disable=SC2317 # the cases are run by their names
set -eu
# shellcheck source-path=SCRIPTDIR/../.. source=tests/usb/ring.sh
. "$(dirname "$0")/ring.sh"

# cancel_now TITLE ORDERS: cancels the job sent last, mends the printer, and has a job done there.
cancel_now() {
  cancel_job "$1"
  tell "$2"
  next_is_right "$1"
}
cancel_job() {
  scheduler_client cancel "$queue-$scheduler_job"
  expect "$1: the job cancelled" "$(job_state)" canceled
}
next_is_right() {
  if wait_for backend_waits; then tell 'stale 0'; fi
  job_is_right "$1, and the next job"
}

case_silent() {
  printer --silent
  send ReportLevels
  wait_heard 'heard status query'
  cancel_now 'no answer' 'silent off'
}

case_asleep() {
  printer --asleep 1000
  send ReportLevels
  wait_heard 'answered status query'
  cancel_now 'not awake' 'asleep 0'
}

# What is left of the reply goes with the plug.
case_in_pieces() {
  printer --fragments 64,64 --delay 700
  send ReportLevels
  wait_heard 'heard status query'
  cancel_job 'in the middle of a reply'
  wait_heard 'answered status query'
  tell 'unplug, plug, delay 0'
  next_is_right 'in the middle of a reply'
}

case_nak() {
  printer
  tell 'at wake-up nak-out 1000'
  send ReportLevels
  wait_heard 'at last: '
  cancel_now 'nothing is taken' 'nak-out 0'
}

case_stall_in() {
  printer
  tell 'at status-query stall-in on'
  send ReportLevels
  wait_heard 'heard status query'
  cancel_now 'all reads stall' 'unplug, plug, stall-in off'
}

case_stall_out() {
  printer
  tell 'stall-out on'
  send ReportLevels
  wait_logged 'Unable to send data to printer'
  cancel_now 'all writes stall' 'stall-out off'
}

case_at_end() {
  printer
  send ReportLevels ReportStatus
  wait_filter
  expect_job 'all is done' "$GOOD" "$ASKED_BOTH"
  wait_logged 'Waiting for read thread to exit'
  cancel_now 'all is done' 'delay 0'
}

run_cases nak asleep in_pieces silent stall_in stall_out at_end
