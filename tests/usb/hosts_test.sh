#!/bin/bash
# The simulated USB printer before hosts that behave badly: those that are killed, at any moment,
# leave it usable for the next; one that waits costs nobody processor time.
set -eu
# shellcheck source-path=SCRIPTDIR/../.. source=tests/harness/expect.sh
. "$(dirname "$0")/../harness/expect.sh"
# shellcheck source-path=SCRIPTDIR/../.. source=scripts/lib/private-scheduler.sh
. "$root/scripts/lib/private-scheduler.sh"
# shellcheck source-path=SCRIPTDIR/../.. source=scripts/lib/simulated-printer.sh
. "$root/scripts/lib/simulated-printer.sh"

KILLED=40 # hosts
work=$(mktemp -d)
export TMPDIR=$work
host=
on_exit "end_child \$host; printer_stop; rm -rf '$work'"
install -m 0755 "$(scheduler_cups_path serverbin)/backend/usb" "$work/backend"
printf '\033EWU\033V21' >"$work/questions"
printer_start "$USB_SIMULATOR"
wait_until 30 printer_said 'plugged in at ' 0 ||
  give_up 'the printer' "$(<"$printer_dir/heard")" 'plugged in'

# host: the backend asks the printer; what it is answered goes to $work/answer. Sets $host.
host() {
  rm -f "$work/answer"
  DEVICE_URI='usb://Velmo/Photo?serial=V0001' LD_PRELOAD=libumockdev-preload.so.0 \
    UMOCKDEV_DIR=$(sed -n 's/^plugged in at //p' "$printer_dir/heard") \
    "$work/backend" 1 user title 1 '' "$work/questions" 3>"$work/answer" 2>>"$work/log" &
  host=$!
}

answered() { stat -c %s "$work/answer" 2>/dev/null; }
is_answered() { [[ $(answered) == 192 ]]; }
all_released() { (($(printer_count 'released by') == $(printer_count 'claimed by'))); }

# Every other one is killed when it has the device, where it waits for a printer that says nothing;
# the others in whatever they do.
printer_tell silent on
for ((i = 0; i < KILLED; ++i)); do
  claims=$(printer_count 'claimed by')
  host
  ((i % 2 == 0)) || wait_until 60 printer_said 'claimed by' "$claims" ||
    give_up "host $((i + 1)) behind killed ones" 'without the device' 'has the device'
  sleep "0.$(printf %03d $((RANDOM % 300)))"
  ! jobs -pr | grep -qFx "$host" || kill -KILL "$host"
  wait "$host" 2>/dev/null || true
done
wait_until 60 all_released ||
  give_up 'claims that are not given back' \
    $(($(printer_count 'claimed by') - $(printer_count 'released by'))) 0
printer_tell silent off
host
wait_until 60 is_answered ||
  give_up "bytes that the next host is answered; its log: $(tail -n 5 "$work/log")" "$(answered)" 192
end_child "$host"

# How often the printer and the host have given up the processor: a busy machine lets those that find
# always something to do come by it seldom, and they show all the same.
times_run() {
  awk '/ctxt_switches:/ { times += $2 } END { print times }' \
    "/proc/$printer_pid"/task/*/status "/proc/$host"/task/*/status
}

printer_tell silent on
queries=$(printer_count 'heard status query')
host
wait_until 60 printer_said 'heard status query' "$queries" ||
  give_up 'the printer before the host that waits' 'has heard no query' 'has heard one'
before=$(times_run)
sleep 2
times=$(($(times_run) - before))
expect_that "printer and host wait, and ran $times times in two seconds" test "$times" -lt 200
expect_end
