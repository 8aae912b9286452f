# shellcheck shell=bash
# What the tests of this ring share: a private scheduler with the filter just built, a
# simulated printer, and comparing what a queue shows with what it should show.
#
# Environment: FILTER, SIMULATOR and ONEWAY, the executables under test and around it.

: "${FILTER:?}" "${SIMULATOR:?}" "${ONEWAY:?}"

lib=$(dirname "${BASH_SOURCE[0]}")/../../scripts/lib
# shellcheck source-path=SCRIPTDIR/../.. source=scripts/lib/private-scheduler.sh
. "$lib/private-scheduler.sh"
# shellcheck source-path=SCRIPTDIR/../.. source=scripts/lib/simulated-printer.sh
. "$lib/simulated-printer.sh"
on_exit 'scheduler_stop; printer_stop'

failures=0

# expect WHAT ACTUAL EXPECTED: compares two texts byte by byte.
expect() {
  [[ $2 == "$3" ]] && return
  echo "FAILED: $1"
  echo "  is        \"$2\""
  echo "  should be \"$3\""
  failures=$((failures + 1))
}

# expect_queue TITLE LEVEL MESSAGE NAME REASONS: compares what the queue "photo" shows.
expect_queue() {
  echo "$1"
  expect 'the level' "$(scheduler_printer_attribute photo marker-levels)" "$2"
  expect 'the message' "$(scheduler_printer_attribute photo marker-message)" "$3"
  expect 'the name' "$(scheduler_printer_attribute photo marker-names)" "$4"
  expect 'the colour' "$(scheduler_printer_attribute photo marker-colors)" '#00FF00'
  expect 'the type' "$(scheduler_printer_attribute photo marker-types)" ink-ribbon
  expect 'the reasons' "$(scheduler_printer_attribute photo printer-state-reasons)" "$5"
}

# tell_printer ORDERS: gives the printer several orders, separated by a comma and a blank.
tell_printer() {
  local order
  while IFS= read -r order; do
    [[ -z $order ]] || printer_tell "$order"
  done <<<"${1//, /$'\n'}"
}

# run_job DIRECTIVE...: runs a command job on the queue "photo" to its completion.
run_job() {
  scheduler_send_command photo "$@"
  scheduler_wait_job
}

# job_log: writes what the log holds of the job sent last, without the time stamps.
job_log() {
  sed -n "s/^[A-Z] \[[^]]*\] \[Job $scheduler_job\] //p" "$scheduler_log"
}

# Ends a test: the scheduler must have found nothing wrong with the filter.
finish() {
  local complaint='cups-insecure-filter-warning|cups-missing-filter-warning|Filter failed|crashed|stopped with status'
  expect 'the list of complaints in the log' "$(grep -E "$complaint" "$scheduler_log")" ''
  exit $((failures > 0))
}
