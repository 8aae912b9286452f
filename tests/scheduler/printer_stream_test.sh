#!/bin/bash
# What the printer hears through the scheduler and its backend: one wake-up for each job,
# one status query for each directive, repeated while the printer sleeps, and nothing else.
set -eu
# shellcheck source-path=SCRIPTDIR/../.. source=tests/scheduler/ring.sh
. "$(dirname "$0")/ring.sh"

printer_start "$SIMULATOR"
scheduler_start "$FILTER"
scheduler_add_queue photo "$(printer_uri)"

# Runs a job and compares what the printer heard from its connection's beginning to its end.
expect_heard() {
  local title=$1 expected=$2 closed
  shift 2
  closed=$(printer_count 'connection closed')
  run_job "$@"
  wait_until 10 printer_said 'connection closed' "$closed"
  expect "$title: what the printer heard" "$(tac "$printer_dir/heard" |
    sed '/^connection opened$/q' | tac)" "$expected"
}

expect_heard 'no directive of ours' 'connection opened
heard wake-up
connection closed' '# nothing' Clean

expect_heard 'both directives' 'connection opened
heard wake-up
heard status query
answered status query with 192 bytes
heard status query
answered status query with 192 bytes
connection closed' ReportLevels ReportStatus

printer_tell asleep 2
expect_heard 'a printer that is awake at the third query' 'connection opened
heard wake-up
heard status query
answered status query with 192 bytes
heard status query
answered status query with 192 bytes
heard status query
answered status query with 192 bytes
connection closed' ReportLevels
expect_queue 'and then tells its levels' 50 'Prints Remaining = 350 / 700' 'Ribbon Type: 13x18(5x7″)' none

printer_tell fragments 100,92
printer_tell delay 50
printer_tell remaining 70
run_job ReportLevels
expect_queue 'a reply in two pieces' 10 'Prints Remaining = 70 / 700' 'Ribbon Type: 13x18(5x7″)' none
finish
