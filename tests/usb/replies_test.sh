#!/bin/bash
# Over USB, the printer's replies in every form in which they come: whole and in pieces, long, late,
# from a printer that sleeps, at full speed, and behind bytes that nobody asked for.
# shellcheck disable=SC2317 # the cases are run by their names
set -eu
# shellcheck source-path=SCRIPTDIR/../.. source=tests/usb/ring.sh
. "$(dirname "$0")/ring.sh"

case_both() {
  printer
  job_is_right 'both directives'
}

case_error() {
  printer --error '06 02 02'
  send ReportStatus
  expect_job 'a printer error' '; ; ; com.velmo-error0001' 'wake-up ReportStatus asks 192 bytes'
  expect_end_of_job 'a printer error' completed
}

case_pieces() {
  printer --fragments 64,64
  job_is_right 'pieces of 64 bytes'
  tell 'delay 300'
  job_is_right 'pieces of 64 bytes, 300 ms apart'
}

case_long() {
  printer --reply-length 512
  send ReportLevels
  expect_job 'a reply of 512 bytes' "$GOOD" 'wake-up ReportLevels asks 512 bytes'
  expect_end_of_job 'a reply of 512 bytes' completed
}

case_asleep() {
  printer --asleep 3
  send ReportLevels ReportStatus
  expect_job 'not awake three times' "$GOOD" "wake-up ReportLevels \
asks 192 bytes asks 192 bytes asks 192 bytes asks 192 bytes ReportStatus asks 192 bytes"
  expect_end_of_job 'not awake three times' completed
}

# Three packets of 64 bytes are full, and the backend's read has room for more.
case_full_speed() {
  printer --full-speed
  send ReportLevels ReportStatus
  expect_job 'full speed' "$NO_ANSWER" "$FAILED_BOTH"
  expect_end_of_job 'full speed' completed
  tell 'zero-length-packets on, unplug, plug'
  job_is_right 'full speed, an empty packet behind the reply'
  tell 'zero-length-packets off, reply-length 193'
  send ReportLevels
  expect_job 'full speed, 193 bytes' "$GOOD" 'wake-up ReportLevels asks 193 bytes'
  expect_end_of_job 'full speed, 193 bytes' completed
}

# Zeros say that there is no ribbon; the printer has one, and an error.
case_stale_reply() {
  printer --error '06 02 02'
  tell 'stale 192'
  send ReportLevels
  expect_shows 'a reply of an earlier conversation' '-1;  ; Ribbon Type: 00; com.velmo-error0005'
  expect_end_of_job 'a reply of an earlier conversation' completed
  tell 'error 00 00 00'
  job_is_right 'a reply of an earlier conversation, and the next job'
}

# The reply is read twenty bytes too late: neither the ribbon nor the error are where they should be.
case_stale_bytes() {
  printer --error '06 02 02'
  tell 'stale 20'
  send ReportLevels
  expect_shows 'some bytes of an earlier conversation' '-1;  ; Ribbon Type: 00; none'
  expect_end_of_job 'some bytes of an earlier conversation' completed
}

# one_job_goes TITLE SHOWN TRANSCRIPT DIRECTIVE...: one job of several goes so. The filter waits a
# second for a reply; how much of it is over when the printer hears the question is chance.
one_job_goes() {
  local answered
  for _ in {1..20}; do
    answered=$(printer_count 'answered status query')
    send "${@:4}"
    wait_filter
    [[ $(transcript) != "$3" ]] || break
    wait_heard 'answered status query' $((answered + $# - 4))
    expect_end_of_job "$1" completed
  done
  expect_job "$1" "$2" "$3"
  wait_heard 'answered status query' $((answered + $# - 4))
  expect_end_of_job "$1" completed
}

case_late() {
  printer --delay 900
  one_job_goes 'a reply after 0.9 s' "$GOOD" 'wake-up ReportLevels asks 192 bytes' ReportLevels
}

case_too_late() {
  printer --delay 1500
  one_job_goes 'a reply after 1.5 s' "$NO_ANSWER" "$NOTHING_CAME" ReportLevels
}

# The second question reads the reply to the first.
case_too_late_twice() {
  printer --delay 1500
  one_job_goes 'replies after 1.5 s' '-2;  ; Ribbon Type: 00; none' \
    'wake-up ReportLevels asks nothing came ReportStatus asks 192 bytes' ReportLevels ReportStatus
}

run_cases asleep too_late too_late_twice late full_speed pieces both error long stale_reply stale_bytes
