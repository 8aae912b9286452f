#!/bin/bash
# What comes between: other clients, signals, a filter that the scheduler does not trust, a
# standard output that is gone. The queue is old or new, never half.
set -eu
# shellcheck source=tests/admin/ring.sh
. "$(dirname "$0")/ring.sh"

# --- somebody else changes the PPD file between reading and writing
make_queue race "$RASTER"
make_ppd "$work/other" "$RASTER" '*cupsVendor: "from elsewhere"'
# shellcheck disable=SC2016 # for the shell that runs them
other='[ "$REQUEST" != 4 ] || lpadmin -p race -P "$work/other" 2>/dev/null'
hooked "$other" attach --no-ask race
expect 'a change between reading and writing: status' "$status" 0
expect_that 'the change is kept' grep -qF 'from elsewhere' "$(ppd race)"
ctl detach race
cp "$work/other" "$work/given"
expect_unchanged 'detached' race

# shellcheck disable=SC2016
other='[ "$OPERATION" != CUPS-Get-PPD ] || { cat "$work/other"; echo "*% $REQUEST"; } >"$work/next"
  [ "$OPERATION" != CUPS-Get-PPD ] || lpadmin -p race -P "$work/next" 2>/dev/null'
hooked "$other" attach --no-ask race
expect_refused 'changes all the time' 'others change its PPD file all the time'
expect 'nothing was put in' "$(grep -c velmoctl "$(ppd race)")" 0

# --- somebody else changes it between writing and looking
make_queue race "$RASTER"
# shellcheck disable=SC2016
other='[ "$REQUEST" != 6 ] || lpadmin -p race -P "$work/other" 2>/dev/null'
hooked "$other" attach --no-ask race
expect 'a change between writing and looking: status' "$status" 0
expect_that 'the change is kept' grep -qF 'from elsewhere' "$(ppd race)"
expect_that 'the block is there' grep -qF 'velmoctl begin' "$(ppd race)"

# --- a signal before each request
make_ppd "$work/old" "$RASTER"
make_queue signal "$RASTER"
scheduler_client cupsdisable -r 'for a test' signal
ctl attach --no-ask signal
cp "$(ppd signal)" "$work/new"
ctl detach signal
# expect_whole SIGNAL NUMBER COMMAND...: interrupted before this request, it leaves the queue paused
# and its file old or new.
expect_whole() {
  local rule="$3, $1 before request $2" whole=no
  hooked "[ \"\$REQUEST\" != $2 ] || kill -$1 \"\$VELMOCTL\"" "${@:3}" signal
  expect "$rule: ended by it" "$status" $((128 + $(kill -l "$1")))
  expect "$rule: the pause" "$(queue_attribute signal printer-state-reasons)" paused
  if cmp -s "$work/old" "$(ppd signal)" || cmp -s "$work/new" "$(ppd signal)"; then whole=yes; fi
  expect "$rule: the file is old or new" "$whole" yes
}
for name in INT TERM HUP; do
  for number in 1 2 3 4 5 6 7 8; do
    expect_whole "$name" "$number" attach --no-ask
    ctl attach --no-ask signal
    expect_whole "$name" "$number" detach
    ctl detach signal
  done
done

# --- a filter that the scheduler cannot start
cp "$work/old" "$work/given"
rm "$scheduler_dir/bin/filter/commandtovelmo"
make_queue filter "$RASTER"
ctl attach --no-ask filter
expect_refused 'a filter that is missing' 'cups-missing-filter-warning'
expect_part 'the old file is given back' "$errors" 'the old PPD file was given back'
expect_unchanged 'a filter that is missing' filter
scheduler_install filter "$FILTER"
if [[ $EUID -eq 0 ]]; then
  # Only a scheduler that runs as root looks at whom its filters belong to.
  chmod 0777 "$scheduler_dir/bin/filter/commandtovelmo"
  ctl attach --no-ask filter
  expect_refused 'a filter that others can write' 'cups-insecure-filter-warning'
  expect_unchanged 'a filter that others can write' filter
  chmod 0755 "$scheduler_dir/bin/filter/commandtovelmo"
fi

ctl attach --no-ask filter
expect_done 'with a good filter'
rm "$scheduler_dir/bin/filter/commandtovelmo"
scheduler_client lpadmin -p filter -P "$(ppd filter)" 2>/dev/null
ctl list
expect_part 'list tells that the filter is missing' "$said" 'filter: broken: the scheduler does not start a filter'
ctl detach filter
expect_done 'a queue whose filter is missing is detached'
expect_unchanged 'detached' filter
scheduler_install filter "$FILTER"

# --- a queue that is printing
make_queue busy "$RASTER"
scheduler_client lpadmin -p busy -v socket://127.0.0.1:9 2>/dev/null
scheduler_client lp -d busy -o raw "$work/given" >/dev/null
printing() { [[ $(queue_attribute busy printer-state) == processing ]]; }
wait_until 30 printing
ctl attach --no-ask busy
expect_refused 'a queue that is printing' 'say --while-printing'
expect_unchanged 'a queue that is printing' busy
ctl attach --no-ask --while-printing busy
expect 'a queue that is printing, all the same: status' "$status" 0
scheduler_client cancel -a busy

# --- the standard output
make_queue output "$RASTER"
ctl attach --no-ask output
NOT_WRITTEN='velmoctl: standard output cannot be written: '
for arguments in list 'list --json' status 'status --json' 'status --watch' \
  'attach --no-ask output' 'attach --dry-run --no-reason-texts output' 'detach --dry-run output' \
  --help 'attach --help' --version; do
  export arguments
  # shellcheck disable=SC2016 # for the shell that runs it
  run_ctl env VELMOCTL="$VELMOCTL" sh -c 'exec "$VELMOCTL" $arguments >/dev/full'
  expect_refused "a full standard output: $arguments" "${NOT_WRITTEN}No space left on device"
  # shellcheck disable=SC2016
  run_ctl env VELMOCTL="$VELMOCTL" sh -c 'exec "$VELMOCTL" $arguments >&-'
  expect_refused "a closed standard output: $arguments" "${NOT_WRITTEN}Bad file descriptor"
  expect "a closed standard output: $arguments: said once" "$(grep -c cannot <<<"$errors")" 1
done
# A monitor takes 1 for a warning.
# shellcheck disable=SC2016
run_ctl sh -c '"$1" status --check >/dev/full' - "$VELMOCTL"
expect 'a full standard output: status --check: status' "$status" 3
for command in detach 'attach --no-ask'; do
  export command
  # shellcheck disable=SC2016
  run_ctl env VELMOCTL="$VELMOCTL" sh -c 'exec "$VELMOCTL" $command output >/dev/full'
  expect_refused "a full standard output: $command" "${NOT_WRITTEN}No space left on device"
  expect_part "a full standard output: $command: what was done is said all the same" "$errors" \
    'what was asked for is done'
done
expect_that 'the last was done' grep -qF 'velmoctl begin' "$(ppd output)"

# --- two at once
make_queue twin "$RASTER"
make_queue other "$RASTER"
# both COMMAND OTHER-COMMAND: two of velmoctl at the same time.
# shellcheck disable=SC2086 # words
both() {
  scheduler_client "$VELMOCTL" $1 >"$work/both.1" 2>&1 &
  ctl $2
  first=0
  wait $! || first=$?
}
for round in 1 2 3 4 5; do
  both 'attach --no-ask twin' 'attach --no-ask twin'
  expect "round $round: both attach one queue: statuses" "$first $status $errors" '0 0 '
  expect "round $round: both attach one queue: one block" "$(grep -c 'velmoctl begin' "$(ppd twin)")" 1
  both 'detach twin' 'detach twin'
  expect "round $round: both detach one queue: statuses" "$first $status $errors" '0 0 '
  expect_unchanged "round $round: both detach one queue" twin
  both 'attach --no-ask twin' 'attach --no-ask other'
  expect "round $round: each attaches a queue: statuses" "$first $status $errors" '0 0 '
  both 'detach twin' 'detach other'
  expect_unchanged "round $round: each detaches a queue" twin
  expect_unchanged "round $round: each detaches a queue" other
done
expect_end
