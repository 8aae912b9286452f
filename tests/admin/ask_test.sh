#!/bin/bash
# velmoctl ask in front of printers that are off, asleep, silent or busy, several at once, and
# interrupted: each has its sentence, and no job of ours is left behind.
set -eu
# shellcheck source=tests/admin/ring.sh
. "$(dirname "$0")/ring.sh"

printer_start "$SIMULATOR" --total 700 --remaining 350
make_queue photo "$RASTER"
scheduler_client lpadmin -p photo -v "$(printer_uri)" 2>/dev/null
make_queue nobody "$RASTER"
ctl attach --no-ask photo nobody

jobs_of() { queue_attribute "$1" queued-job-count; }
has_jobs() { [[ $(jobs_of "$1") == "$2" ]]; }
state_is() { [[ $(queue_attribute "$1" printer-state) == "$2" ]]; }

# --- how the printer is
printer_tell asleep 1
ctl ask photo
expect_done 'a printer that has to wake up'
expect_part 'a printer that has to wake up' "$said" '350 of 700 prints'
wait_until 30 has_jobs photo 0
printer_tell power 02
ctl ask --timeout 1 photo
expect_refused 'a printer that does not wake up' \
  'velmoctl: photo: has not brought its values within 1 s; velmoctl status shows them later'
printer_tell power 00
wait_until 30 has_jobs photo 0
printer_tell silent on
ctl ask --timeout 1 photo
expect_refused 'a silent printer' 'velmoctl: photo: has not brought its values within 1 s'
printer_tell silent off
scheduler_client cancel -a photo
wait_until 30 has_jobs photo 0
ctl ask --timeout 10 nobody photo
expect_refused 'several, of which one is off' 'velmoctl: nobody: has not brought its values within 10 s'
expect_part 'several, of which one is off: the other is shown' "$said" '350 of 700 prints'
expect_no_part 'several, of which one is off: it is not shown' "$said" 'nobody'
scheduler_client cancel -a nobody
wait_until 30 has_jobs nobody 0
ctl ask --timeout 1 nobody
expect_refused 'a printer that is off' 'velmoctl: nobody: has not brought its values within 1 s'
expect 'its job is left to the scheduler' "$(jobs_of nobody)" 1

# --- a queue that is busy: who asks waits, who asks after that waits with him
scheduler_client cancel -a nobody
wait_until 30 state_is nobody idle
scheduler_client lp -d nobody -o raw "$work/given" >/dev/null
wait_until 30 state_is nobody processing
scheduler_client "$VELMOCTL" ask --timeout 60 nobody >"$work/first" 2>&1 &
first=$!
wait_until 30 has_jobs nobody 2
ctl ask --timeout 1 nobody
expect_refused 'who joins' 'velmoctl: nobody: was busy for 1 s'
expect 'who joins sends no job and takes none back' "$(jobs_of nobody)" 2
scheduler_client lpadmin -p nobody -v "$(printer_uri)" 2>/dev/null
wait "$first" || true
expect_part 'the queue is free again: who waited has the values' "$(<"$work/first")" \
  '350 of 700 prints'

# --- interrupted: its job is taken back; one that it has joined is not
make_queue busy "$RASTER"
ctl attach --no-ask busy
scheduler_client lp -d busy -o raw "$work/given" >/dev/null
wait_until 30 state_is busy processing
for name in INT TERM; do
  for number in 1 2 3 4 5 6; do
    hooked "[ \"\$REQUEST\" != $number ] || kill -$name \"\$VELMOCTL\"" ask busy
    expect "$name before request $number: ended by it" "$status" $((128 + $(kill -l "$name")))
    expect "$name before request $number: no job is left" "$(jobs_of busy)" 1
  done
done
scheduler_client "$VELMOCTL" ask --timeout 60 busy >/dev/null 2>&1 &
first=$!
wait_until 30 has_jobs busy 2
# shellcheck disable=SC2016 # for the shell that runs it
hooked '[ "$REQUEST" != 5 ] || kill -INT "$VELMOCTL"' ask busy
expect 'interrupted while it waits with another: ended by it' "$status" 130
expect "interrupted while it waits with another: the other's job stays" "$(jobs_of busy)" 2
scheduler_client cancel -a busy
wait "$first" || true

# --- a scheduler that forgets each job as soon as that has ended
end_child "$scheduler_pid"
echo 'PreserveJobHistory No' >>"$scheduler_dir/etc/cupsd.conf"
scheduler_run_cupsd
wait_until 60 scheduler_is_settled || scheduler_fail 'it does not come back'
several=(one two three four five)
for name in "${several[@]}"; do scheduler_add_queue "$name" "$(printer_uri)" "$work/given"; done
ctl attach --no-ask "${several[@]}"
ctl ask "${several[@]}"
expect_done 'jobs that are forgotten'
expect 'jobs that are forgotten: the values' "$(grep -c '350 of 700 prints' <<<"$said")" 5

# --- a scheduler that hangs: who ends the program need not wait until it gives up, a minute later
has_ended() { ! kill -0 "$1" 2>/dev/null; }
export scheduler_pid
# shellcheck disable=SC2016 # for the shell that runs it
hooked '[ "$REQUEST" != 5 ] || kill -STOP "$scheduler_pid"; [ "$REQUEST" != 5 ] || kill -TERM "$VELMOCTL"' ask busy &
first=$!
heard=no
if wait_until 45 has_ended "$first"; then heard=yes; fi
kill -CONT "$scheduler_pid"
expect 'interrupted while the scheduler hangs: ended before it goes on' "$heard" yes
expect_end
