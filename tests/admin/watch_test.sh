#!/bin/bash
# velmoctl status --watch on a terminal: it is drawn again, and ends when the person or the
# terminal goes.
set -eu
# shellcheck source=tests/admin/ring.sh
. "$(dirname "$0")/ring.sh"

make_queue photo "$RASTER"
ctl attach --no-ask photo
export VELMOCTL work
mkfifo "$work/keys"
exec 3<>"$work/keys"

# What the shell on a terminal runs: it tells the processes of the terminal and of the program,
# and how that ended, whose signals it outlives.
# shellcheck disable=SC2016 # for that shell
ON_TERMINAL='trap : INT; echo $PPID >"$work/terminal"
  sh -c '\''echo $$ >"$work/watcher"; exec "$VELMOCTL" status --watch photo'\''
  echo $? >"$work/ended"'

# watch: starts it on a terminal of its own, whose picture is in $work/screen and whose keys are
# pressed over descriptor 3. What a shell starts beside itself ignores Ctrl-C, and script(1) of
# util-linux 2.42 leaves that so.
watch() {
  rm -f "$work/ended"
  : >"$work/screen"
  scheduler_client env --default-signal=INT -u NO_COLOR TERM=xterm SHELL=/bin/sh \
    script -qfc "$ON_TERMINAL" "$work/screen" <"$work/keys" >/dev/null 2>&1 &
  wait_until 30 drawn 1
  watcher=$(<"$work/watcher") terminal=$(<"$work/terminal")
}
# drawn COUNT: whether the screen was drawn so often.
end_watch() { [[ -z ${terminal-} ]] || kill "$terminal" 2>/dev/null || true; }
on_exit "end_watch; scheduler_stop; printer_stop; rm -rf '$work'"
drawn() { [[ $(grep -c $'\x1b\\[H\x1b\\[2J' "$work/screen") -ge $1 ]]; }
shows() { grep -qaF "$1" "$work/screen"; }
gone() { ! kill -0 "$watcher" 2>/dev/null; }
ended_with() { [[ $(cat "$work/ended" 2>/dev/null) == "$1" ]]; }

watch
expect_part 'it is coloured' "$(<"$work/screen")" $'photo  \x1b[33mnever asked\x1b[0m'
scheduler_client cupsdisable -r 'out for lunch' photo
expect_that 'what changes is shown' wait_until 30 shows 'queue stopped'
expect_that 'each time on an empty screen' drawn 2
printf '\003' >&3
expect_that 'Ctrl-C ends it, as a signal does' wait_until 30 ended_with 130
ended_with 130 || end_watch
wait $!

watch
kill -TERM "$watcher"
expect_that 'SIGTERM ends it, as a signal does' wait_until 30 ended_with 143
ended_with 143 || end_watch
wait $!

watch
kill -KILL "$terminal"
expect_that 'it ends with its terminal' wait_until 30 gone

# --- without a terminal: no colour, no empty screens, and an end when nobody reads any more
scheduler_client "$VELMOCTL" status --watch photo 2>"$work/errors" | head -n 1 >"$work/said"
expect 'a reader takes a line' "$(<"$work/said")" 'photo  queue stopped'
expect 'and no more' "$(<"$work/errors")" 'velmoctl: standard output cannot be written: Broken pipe'
expect_end
