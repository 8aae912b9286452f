#!/bin/bash
# velmoctl explain on what a real scheduler logs of the filter, the backend and itself.
set -eu
# shellcheck source=tests/admin/ring.sh
. "$(dirname "$0")/ring.sh"

printer_start "$SIMULATOR" --total 700 --remaining 350
scheduler_add_queue photo "$(printer_uri)"
run_job() {
  scheduler_send_command photo "$@"
  scheduler_wait_job
}

# told JOB: what is told of it, without its first line, in which a time stands.
told() {
  ctl explain --job "$1" "$scheduler_log"
  expect_done "explain --job $1"
  told=$(tail -n +2 <<<"$said")
}

# --- one job after the other
printer_tell error 06 02 02
run_job ReportLevels
ctl explain "$scheduler_log"
expect_done 'explain'
expect_part 'its queue and user' "$said" "Job $scheduler_job on photo for $(id -un), "
told "$scheduler_job"
example=$(sed -n '/^    Job 2 on photo/,/^$/s/^    //p' "$root/docs/troubleshooting.md" | tail -n +2)
expect 'a job is told as the document shows it' "$told" "$example"
others_taken_back=$(grep 'reasons taken back$' <<<"$example")

printer_tell error 11 22 33
printer_tell asleep 2
run_job Clean reportstatus
told "$scheduler_job"
# shellcheck disable=SC1111 # the filter's inch mark
expect 'asleep, and an unknown error' "$told" "  Asked     Clean, line 2 of the command file: none of the filter's directives, skipped
  Asked     reportstatus, line 3 of the command file
  Answer    192 bytes, 2 times
    power_state     0x01            not awake
    mech_state      [0x00,0x00]     mechanism good
    memory_state    0x00            memory free
    error_info      0x11,0x22,0x33  a code that is not in the table, com.velmo-error0023
    ink ribbon      350 / 700       prints left of the ribbon's
    ink_sheet_type  0x84            ribbon for 13x18(5x7″)
  Answer    192 bytes
    power_state     0x00            awake
    mech_state      [0x00,0x00]     mechanism good
    memory_state    0x00            memory free
    error_info      0x11,0x22,0x33  a code that is not in the table, com.velmo-error0023
    ink ribbon      350 / 700       prints left of the ribbon's
    ink_sheet_type  0x84            ribbon for 13x18(5x7″)
  Failed    encountered undefined error number (0x11,0x22,0x33)
    Cause   an error code without a keyword of its own
    Cure    what the printer's panel and manual say
  Reported  reason com.velmo-error0023
$others_taken_back
  Ended     Job completed."

printer_tell reply-length 150
run_job ReportLevels
told "$scheduler_job"
expect_part 'an answer that is too short' "$told" "  Answer    150 bytes, by the backend's count; not logged
  Failed    cupsBackChannelRead() failed. ret=-1
    Cause   nothing came for a second: "
expect_part 'what is reported of it' "$told" '  Reported  level -2, not available: there was no usable answer'
printer_tell reply-length 192

# --- two at once
scheduler_add_queue other "$DEVICE"
scheduler_send_command other ReportStatus
waiting=$scheduler_job
no_printer() { scheduler_job_log | grep -q 'may not exist'; }
expect_that 'the backend finds no printer' wait_until 30 no_printer
run_job ReportLevels
scheduler_client cancel -a other
told "$waiting"
expect_part 'what the backend says' "$told" '  Failed    The printer may not exist or is unavailable at this time.
    Cause   nobody listens at the device URI
    Cure    look at the device URI (lpstat -v), printer and cable'
expect 'a job that is cancelled' "$(tail -n 1 <<<"$told")" '  Ended     Job canceled by user.'
ctl explain "$scheduler_log"
expect 'every job is told, as it began' "$(sed -n 's/^Job \([0-9]*\) on .*/\1/p' <<<"$said" | paste -sd,)" 1,2,3,4,5
whole=$said

# --- the same log in other forms
ctl explain - <"$scheduler_log"
expect 'standard input' "$said" "$whole"
gzip -c "$scheduler_log" >"$work/error_log.2.gz"
ctl explain "$work/error_log.2.gz"
expect 'compressed' "$said" "$whole"
cut=$(grep -n -m 1 -F '[STS] 0030' "$scheduler_log")
tail -n "+${cut%%:*}" "$scheduler_log" | tail -c +20 >"$work/rotated"
ctl explain --job 1 "$work/rotated"
expect_done 'a log that begins within an answer'
expect 'its beginning is missed' "$(head -n 2 <<<"$said" | sed '1s/, [^,]*$//')" "Job 1 (its beginning is above, or not in this log)
  Answer    not all of its lines are in the log"
expect_part 'the rest is told' "$said" '  Reported  reason com.velmo-error0001'
head -n "$((${cut%%:*} + 1))" "$scheduler_log" | head -c -10 >"$work/cut"
ctl explain "$work/cut"
expect 'a log that ends within an answer' "$(tail -n +2 <<<"$said")" '  Asked     ReportLevels, line 2 of the command file
  Answer    not all of its lines are in the log
  Ended     not seen'
{
  printf 'W [\e[2J] [Job 1] \e]0;title\a \x9b2J \xc2\x9b2J\n'
  cat "$scheduler_log"
} >"$work/hostile"
ctl explain "$work/hostile"
expect 'no order reaches a terminal' "$(LC_ALL=C tr -d '\n -\176\200-\377' <"$work/said" | wc -c)" 0
expect_part 'it is shown what stood there' "$said" 'Said      \x1b]0;title\x07 \x9b2J \xc2\x9b2J'

# --- what the scheduler keeps of a job that failed, when it logs no more than warnings
sed -i 's/^LogLevel .*/LogLevel warn/' "$scheduler_dir/etc/cupsd.conf"
end_child "$scheduler_pid"
: >"$scheduler_log"
scheduler_run_cupsd
expect_that 'the scheduler is back' wait_until 30 scheduler_is_settled
run_job ReportLevels
ctl explain "$scheduler_log"
expect_refused 'a good job leaves no line' 'no job of commandtovelmo is in it; cupsctl --debug-logging'
printer_tell asleep 100
scheduler_send_command photo ReportLevels
filter_pid() {
  local child
  for child in $(pgrep -P "$scheduler_pid"); do
    [[ $(readlink "/proc/$child/exe") != "$scheduler_dir/bin/filter/commandtovelmo" ]] || echo "$child"
  done
}
asked_again() { (($(printer_count 'heard status query') > queries + 1)) && [[ $(filter_pid) ]]; }
queries=$(printer_count 'heard status query')
expect_that 'the printer is asked again and again' wait_until 30 asked_again
kill -ABRT "$(filter_pid)"
recorded() { grep -qF "[Job $scheduler_job] End of messages" "$scheduler_log"; }
expect_that 'the scheduler writes out what it kept' wait_until 30 recorded
ctl explain "$scheduler_log"
expect_done 'a job that crashed'
expect_part 'its queue and user' "$said" "Job $scheduler_job on photo for $(id -un), "
expect_part 'its answers' "$said" '  Asked     ReportLevels, line 2 of the command file
  Answer    192 bytes, '
expect_part 'how the filter ended' "$said" 'commandtovelmo) crashed on signal 6.
    Cause   the filter ended by a signal'
expect_part 'how the job ended' "$said" '  Ended     Job stopped due to filter errors; '
scheduler_client cancel -a

# --- what cannot be done
ctl explain "$work/nowhere"
expect_refused 'no file' "velmoctl: $work/nowhere: cannot be read: No such file or directory; name the file"
ctl explain "$work"
expect_refused 'a folder' "velmoctl: $work: cannot be read to its end: Is a directory"
ctl explain --job 99 "$scheduler_log"
expect_refused 'a job that is not there' 'job 99 of commandtovelmo is not in it'
ctl -h localhost explain "$scheduler_log"
expect 'another scheduler' "$status $errors" '2 velmoctl: explain reads a file, not what the scheduler of -h logs; see velmoctl explain --help'
ctl explain --help
# CLI11 2.6 breaks the line.
expect_part 'the default is told' "$(tr -s ' \n' ' ' <<<"$said")" 'default: /var/log/cups/error_log'
status=0
"$VELMOCTL" explain - <<<"$(<"$work/hostile")" >/dev/full 2>"$work/errors" || status=$?
expect 'a full disk' "$status $(<"$work/errors")" '1 velmoctl: standard output cannot be written: No space left on device'

# --- memory: many jobs that never end, a line of megabytes, many that do
feed() {
  awk -v last="$1" 'BEGIN { for (i = 1; i <= last; ++i)
    printf "D [x] [Job %d] ====> command=[ReportLevels] linenum=%d\n", i % 5000 + 1, i }'
  head -c "$((100 * $1))" /dev/zero | tr '\0' x
  for ((n = 0; n < $1 / 10000; ++n)); do cat "$work/hostile"; done
}
peak() { sed -n 's/^VmHWM:[[:blank:]]*\([0-9]*\) kB/\1/p' "/proc/$1/status"; }
mkfifo "$work/pipe"
# What a sanitizer notes of memory and keeps back of it is not the program's.
ASAN_OPTIONS=quarantine_size_mb=0:thread_local_quarantine_size_kb=0:malloc_context_size=0 \
  "$VELMOCTL" explain - <"$work/pipe" >"$work/said" 2>"$work/errors" &
reader=$!
exec 7>"$work/pipe"
feed 10000 >&7
before=$(peak "$reader")
feed 300000 >&7
after=$(peak "$reader")
exec 7>&-
status=0
wait "$reader" || status=$?
expect 'a long log is read to its end' "$status $(<"$work/errors")" '0 '
expect_part 'and told to its end' "$(tail -n 200 "$work/said")" 'Job 5 on photo'
expect_that "a log that is 30 times as long takes no more memory: $before kB, then $after kB" \
  test "$after" -lt "$((before + 3000))"
expect_end
