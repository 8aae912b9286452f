# shellcheck shell=bash
# What the tests of velmoctl share: a private scheduler with the filter just built, queues, and
# a run of velmoctl with what came of it.
#
# Environment: FILTER, VELMOCTL and HOOKED_VELMOCTL (the same with a hook before each request),
# SIMULATOR.

: "${FILTER:?}" "${VELMOCTL:?}" "${HOOKED_VELMOCTL:?}" "${SIMULATOR:?}"

# shellcheck source-path=SCRIPTDIR/../.. source=tests/harness/expect.sh
. "$(dirname "${BASH_SOURCE[0]}")/../harness/expect.sh"
# shellcheck source-path=SCRIPTDIR/../.. source=scripts/lib/private-scheduler.sh
. "$root/scripts/lib/private-scheduler.sh"
# shellcheck source-path=SCRIPTDIR/../.. source=scripts/lib/simulated-printer.sh
. "$root/scripts/lib/simulated-printer.sh"

work=$(mktemp -d)
on_exit "scheduler_stop; printer_stop; rm -rf '$work'"
scheduler_start "$FILTER"

# shellcheck disable=SC2034 # for the tests
{
  DEVICE='socket://127.0.0.1:9/?snmp=false'
  RASTER='*cupsFilter: "application/vnd.cups-raster 0 rastertolabel"'
  RASTER2='*cupsFilter2: "application/vnd.cups-raster application/octet-stream 0 rastertolabel"'
  RIVAL='*cupsFilter: "application/vnd.cups-command 0 commandtops"'
}

# ctl ARGUMENT...: runs velmoctl; what it writes is in $said, its errors in $errors, its exit
# status in $status.
ctl() { run_ctl "$VELMOCTL" "$@"; }
run_ctl() {
  status=0
  scheduler_client "$@" >"$work/said" 2>"$work/errors" || status=$?
  # shellcheck disable=SC2034 # for the tests
  said=$(<"$work/said") errors=$(<"$work/errors")
}

# hooked HOOK ARGUMENT...: velmoctl with these commands before each request. The scheduler's
# clients that they start are not hooked.
hooked() { run_ctl env REQUEST_HOOK="unset CUPS_ENCRYPTION; $1" work="$work" DEVICE="$DEVICE" "$HOOKED_VELMOCTL" "${@:2}"; }

# expect_done RULE, expect_refused RULE TEXT: how the last run of velmoctl ended.
expect_done() { expect "$1: status and errors" "$status $errors" '0 '; }
expect_refused() {
  expect "$1: status" "$status" 1
  expect_part "$1: said so" "$errors" "$2"
}

# make_ppd FILE [LINE...]: a PPD file that ends with these lines.
make_ppd() {
  local line
  grep -v '^[*]cups\(Commands\|Filter\)' "$root/scripts/lib/scheduler/velmo-minimal.ppd" >"$1"
  for line in "${@:2}"; do printf '%s\n' "$line" >>"$1"; done
}

# make_queue NAME [LINE...]: a queue with such a PPD file, which is kept as $work/given.
make_queue() {
  make_ppd "$work/given" "${@:2}"
  scheduler_add_queue "$1" "$DEVICE" "$work/given"
}

# The PPD file that the scheduler has for a queue.
ppd() { echo "$scheduler_dir/etc/ppd/$1.ppd"; }

# expect_unchanged RULE QUEUE: the queue has the PPD file that it was given.
expect_unchanged() { expect_that "$1: the PPD file is as it was" cmp "$work/given" "$(ppd "$2")"; }

queue_attribute() { scheduler_printer_attribute "$@"; }
