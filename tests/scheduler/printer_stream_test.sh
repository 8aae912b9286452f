#!/bin/bash
# What the printer hears through the scheduler and its backend: one wake-up for each job,
# one status query for each directive, repeated while the printer sleeps, and nothing else.
set -eu
# shellcheck source-path=SCRIPTDIR/../.. source=tests/scheduler/ring.sh
. "$(dirname "$0")/ring.sh"

printer_start "$SIMULATOR"
scheduler_start "$FILTER"
scheduler_add_queue photo "$(printer_uri)"

# expect_heard TITLE QUERIES DIRECTIVE...: runs a job and compares what the printer heard from its
# connection's beginning to its end; each query of so many is answered.
expect_heard() {
  local title=$1 expected=$'connection opened\nheard wake-up' closed i
  for ((i = 0; i < $2; ++i)); do
    expected+=$'\nheard status query\nanswered status query with 192 bytes'
  done
  closed=$(printer_count 'connection closed')
  run_job "${@:3}"
  wait_until 10 printer_said 'connection closed' "$closed"
  expect "$title: what the printer heard" "$(tac "$printer_dir/heard" |
    sed '/^connection opened$/q' | tac)" "$expected"$'\nconnection closed'
}

expect_heard 'no directive of ours' 0 '# nothing' Clean
expect_heard 'both directives' 2 ReportLevels ReportStatus
printer_tell asleep 2
expect_heard 'a printer that is awake at the third query' 3 ReportLevels
expect_queue 'and then tells its levels' 50 'Prints Remaining = 350 / 700' 'Ribbon Type: 13x18(5x7″)' none
finish
