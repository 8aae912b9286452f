#!/bin/bash
# Over USB, jobs that are cancelled in every state in which they stay for a while: the cancel ends
# the filter at once, and the next job of the queue is right. Not here: an absent printer, which is
# a case of faults_test.sh, and states that end before anybody could cancel, such as unplugged.
# shellcheck disable=SC2317 # the cases are run by their names
set -eu
# shellcheck source-path=SCRIPTDIR/../.. source=tests/usb/ring.sh
. "$(dirname "$0")/ring.sh"

# cancel_in TITLE ORDERS: cancels the job sent last, mends the printer, and has a job done there.
cancel_in() {
  cancel_filter "$1"
  tell "$2"
  next_is_right "$1"
}
cancel_filter() {
  scheduler_client cancel "$queue-$scheduler_job"
  expect_state "$1: the job cancelled" canceled
  wait_filter
  expect "$queue, $1: the filter" "$(filter_end)" 'was terminated normally with signal 15.'
}

# cancel_behind TITLE LINE DIRECTIVE...: cancels a job behind this line of its log, where the backend
# stays for seconds and then goes by itself: on a slow machine, before the cancel comes.
cancel_behind() {
  local answer
  for _ in {1..20}; do
    send "${@:3}"
    wait_logged "$2"
    answer=$(scheduler_client cancel "$queue-$scheduler_job" 2>&1) && break
  done
  [[ ! $answer ]] || give_up "$queue, $1: the cancel" "$answer" taken
  expect_state "$1: the job cancelled" canceled
}

backend_goes() { backend_waits || scheduler_job_log | grep -qE '^PID [0-9]+ \(.*/usb\) '; }
wait_backend() {
  wait_for backend_goes ||
    give_up_text "$queue: the cancelled job's log" "should come: the backend's end" \
      "$(scheduler_job_log | tail -n 25)"
  tell 'stale 0'
}
next_is_right() {
  wait_backend
  job_is_right "$1, and the next job"
}

case_silent() {
  printer --silent
  send "${MANY[@]}"
  wait_heard 'heard status query'
  cancel_in 'no answer' 'silent off'
}

case_asleep() {
  printer --asleep 65535
  send "${MANY[@]}"
  wait_heard 'answered status query'
  cancel_in 'not awake' 'asleep 0'
}

case_full_speed() {
  printer --full-speed
  send "${MANY[@]}"
  wait_heard 'answered status query'
  cancel_in 'full speed' 'unplug, plug, zero-length-packets on'
}

# What is left of the reply goes with the plug.
case_in_pieces() {
  printer --fragments 64,64 --delay 700
  send "${MANY[@]}"
  wait_heard 'heard status query'
  cancel_in 'in the middle of a reply' 'unplug, plug, delay 0'
}

# The same when its host has gone already.
case_pieces_left() {
  printer --fragments "$(yes 4 | head -n 20 | paste -sd ,)" --delay 300
  send "${MANY[@]}"
  wait_heard 'heard status query'
  cancel_filter 'in a reply of which pieces are left'
  wait_backend
  wait_heard 'released by the host'
  tell 'unplug, plug, delay 0'
  job_is_right 'in a reply of which pieces are left, and the next job'
}

case_too_late() {
  printer --delay 1500
  send "${MANY[@]}"
  wait_heard 'heard status query'
  cancel_in 'replies after 1.5 s' 'unplug, plug, delay 0'
}

case_unidir() {
  printer
  usb_quirk "$serial" unidir
  send "${MANY[@]}"
  wait_heard 'answered status query'
  usb_quirk "$serial" ''
  cancel_in 'the quirk unidir' 'unplug, plug'
}

case_nak() {
  printer
  tell 'at wake-up nak-out 65535'
  send "${MANY[@]}"
  wait_heard 'at last: '
  cancel_in 'nothing is taken' 'nak-out 0'
}

case_stall_in() {
  printer
  tell 'at status-query stall-in on'
  send "${MANY[@]}"
  wait_heard 'heard status query'
  cancel_in 'all reads stall' 'unplug, plug, stall-in off'
}

# What a cancel reaches that comes when the job is held until it is tried again.
case_held() {
  printer
  scheduler_client lpadmin -p "$queue" -o printer-error-policy=retry-job
  tell 'at status-query unplug'
  send ReportLevels
  wait_logged 'Job held for 300 seconds since it could not be sent.'
  scheduler_client cancel "$queue-$scheduler_job"
  expect_state 'held to be tried again: the job cancelled' canceled
  tell plug
  job_is_right 'held to be tried again, and the next job'
}

case_stall_out() {
  printer
  tell 'stall-out on'
  cancel_behind 'all writes stall' 'Unable to send data to printer' ReportLevels
  tell 'stall-out off'
  next_is_right 'all writes stall'
}

case_at_end() {
  printer
  cancel_behind 'all is done' 'Waiting for read thread to exit' ReportLevels ReportStatus
  expect_job 'all is done' "$GOOD" "$ASKED_BOTH"
  next_is_right 'all is done'
}

run_cases nak asleep in_pieces pieces_left too_late full_speed unidir silent held stall_in stall_out at_end
