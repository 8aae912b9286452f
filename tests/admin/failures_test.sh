#!/bin/bash
# What comes between: other clients, signals, a filter that the scheduler does not trust, a
# standard output that is gone. The queue is old or new, never half.
set -eu
# shellcheck source=tests/admin/ring.sh
. "$(dirname "$0")/ring.sh"

# hooked HOOK ARGUMENT...: velmoctl with these commands before each request. The scheduler's
# clients that they start are not hooked.
hooked() { run_ctl env REQUEST_HOOK="unset CUPS_ENCRYPTION; $1" work="$work" DEVICE="$DEVICE" "$HOOKED_VELMOCTL" "${@:2}"; }

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
for name in INT TERM HUP; do
  for number in 1 2 3 4 5 6 7 8; do
    hooked "[ \"\$REQUEST\" != $number ] || kill -$name \"\$VELMOCTL\"" attach --no-ask signal
    expect "$name before request $number: the pause" "$(queue_attribute signal printer-state-reasons)" paused
    expect "$name before request $number: ended by it" "$status" $((128 + $(kill -l "$name")))
    whole=no
    if cmp -s "$work/old" "$(ppd signal)" || cmp -s "$work/new" "$(ppd signal)"; then whole=yes; fi
    expect "$name before request $number: the file is old or new" "$whole" yes
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
run_ctl sh -c "exec '$VELMOCTL' attach --no-ask output >/dev/full"
expect_refused 'a full standard output' 'velmoctl: standard output cannot be written: No space left on device'
expect_part 'what was done is said all the same' "$errors" 'what was asked for is done'
expect_that 'it was done' grep -qF 'velmoctl begin' "$(ppd output)"
run_ctl sh -c "exec '$VELMOCTL' list >&-"
expect_refused 'a closed standard output' 'standard output cannot be written'
expect_end
