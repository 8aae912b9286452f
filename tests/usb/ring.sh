# shellcheck shell=bash
# What the tests of this ring share: one private scheduler with the system's usb backend, and cases
# that run side by side, each before a printer and a queue of its own.
#
# Environment: FILTER and USB_SIMULATOR, the executables under test and around it.

: "${FILTER:?}" "${USB_SIMULATOR:?}"

# shellcheck source-path=SCRIPTDIR/../.. source=tests/harness/expect.sh
. "$(dirname "${BASH_SOURCE[0]}")/../harness/expect.sh"
# shellcheck source-path=SCRIPTDIR/../.. source=scripts/lib/private-scheduler.sh
. "$root/scripts/lib/private-scheduler.sh"
# shellcheck source-path=SCRIPTDIR/../.. source=scripts/lib/simulated-printer.sh
. "$root/scripts/lib/simulated-printer.sh"
# shellcheck source-path=SCRIPTDIR/../.. source=scripts/lib/simulated-usb.sh
. "$root/scripts/lib/simulated-usb.sh"
# shellcheck source-path=SCRIPTDIR source=job_checks.sh
. "$(dirname "${BASH_SOURCE[0]}")/job_checks.sh"

LONG=120  # seconds: more than anything of the backend takes
AT_ONCE=8 # cases; more would only keep each other from the processor
# shellcheck disable=SC2034 # for expect.sh: run_cases calls run_case, and that the case
EXPECT_FRAME=-5

# What a queue shows: level; message; name; reasons.
# shellcheck disable=SC2034 # for the tests
{
  GOOD='50; Prints Remaining = 350 / 700; Ribbon Type: 13x18(5x7″); none'
  NO_ANSWER='-2;  ; Ribbon Type: 00; com.velmo-error0023'
  ASKED_BOTH='wake-up ReportLevels asks 192 bytes ReportStatus asks 192 bytes'
  NOTHING_CAME='wake-up ReportLevels asks nothing came'
  FAILED_BOTH='wake-up ReportLevels asks nothing came ReportStatus asks nothing came'
}

# Without an answer, so many questions take the filter a second each: it stays where it is.
# shellcheck disable=SC2034 # for the tests
mapfile -t MANY < <(yes ReportLevels | head -n 1000)

# wait_for COMMAND [ARGUMENT...]: waits until it succeeds. Not too often asked: the log is long.
wait_for() {
  local deadline=$((SECONDS + LONG))
  until "$@"; do
    ((SECONDS < deadline)) || return 1
    sleep 0.2
  done
}

# run_cases CASE...: runs the functions of these names side by side. The output of those that fail
# is shown.
run_cases() {
  local work status=0 name failed=0
  declare -A children=()
  work=$(mktemp -d)
  on_exit "end_child \${children[@]}; scheduler_stop; rm -rf '$work'"
  scheduler_start "$FILTER"
  usb_start
  for name; do
    while (($(jobs -pr | wc -l) > AT_ONCE)); do sleep 0.1; done # the scheduler is one, too
    (run_case "$name") >"$work/$name" 2>&1 &
    children[$name]=$!
  done
  for name; do
    wait "${children[$name]}" && unset "children[$name]" && continue
    unset "children[$name]"
    failed=$((failed + 1))
    printf '== %s\n' "$name"
    cat "$work/$name"
  done
  echo "$# cases, $failed failed"
  ((failed == 0)) || status=1
  exit "$status"
}

# What the case does to the printer, the queue and the job is in its function, named case_NAME; its
# queue and the printer's serial number are its own.
run_case() {
  queue=$1
  serial=serial-$1 # newer backends take no notice of one of three characters
  scheduler_pid='' # the scheduler is not this case's to end
  on_exit printer_stop
  "case_$1"
  expect_end
}

# printer [OPTION...]: plugs in the case's printer and puts the queue in front of it.
printer() {
  usb_printer_start "$USB_SIMULATOR" "$serial" "$@"
  scheduler_add_queue "$queue" "$(usb_uri "$serial")"
}

# tell ORDERS: gives the printer several orders, separated by a comma and a blank.
tell() {
  local order
  while IFS= read -r order; do printer_tell "$order"; done <<<"${1//, /$'\n'}"
}

send() { scheduler_send_command "$queue" "$@"; }

# job_logged TEXT [TIMES]: the log of the job sent last has it, so often.
job_logged() { (($(scheduler_job_log | grep -cF -e "$1") >= ${2-1})); }
wait_logged() {
  wait_for job_logged "$@" ||
    give_up_text "$queue: the job's log" "should come: $1" "$(scheduler_job_log | tail -n 25)"
}

# wait_heard TEXT [BEFORE]: waits until the printer has said it once more than before.
wait_heard() {
  wait_for printer_said "$1" "${2-0}" ||
    give_up_text "$queue: what the printer says" "should come: $1" "$(tail -n 25 "$printer_dir/heard")"
}
