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
# shellcheck source-path=SCRIPTDIR/../.. source=tests/harness/expect.sh
. "$(dirname "${BASH_SOURCE[0]}")/../harness/expect.sh"
on_exit 'scheduler_stop; printer_stop'

# expect_queue TITLE LEVEL MESSAGE NAME REASONS: compares what the queue "photo" shows. One of
# which no levels were reported shows no marker at all.
expect_queue() {
  local colour='#00FF00' type=ink-ribbon
  [[ $2 ]] || colour='' type=''
  expect "$1: the level" "$(scheduler_printer_attribute photo marker-levels)" "$2"
  expect "$1: the message" "$(scheduler_printer_attribute photo marker-message)" "$3"
  expect "$1: the name" "$(scheduler_printer_attribute photo marker-names)" "$4"
  expect "$1: the colour" "$(scheduler_printer_attribute photo marker-colors)" "$colour"
  expect "$1: the type" "$(scheduler_printer_attribute photo marker-types)" "$type"
  expect "$1: the reasons" "$(scheduler_printer_attribute photo printer-state-reasons)" "$5"
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

# Ends a test: the scheduler must have found nothing wrong with the filter.
finish() {
  expect 'the complaints in the log' "$(scheduler_complaints)" ''
  expect_end
}
