# shellcheck shell=bash
# What the tests of velmoctl keep-fresh share: a private scheduler, a simulated printer that
# counts prints, queues in front of it, and what keep-fresh has done.
#
# Environment: FILTER, SIMULATOR and VELMOCTL.

: "${FILTER:?}" "${SIMULATOR:?}" "${VELMOCTL:?}"

# shellcheck source-path=SCRIPTDIR/../.. source=tests/harness/expect.sh
. "$(dirname "${BASH_SOURCE[0]}")/../harness/expect.sh"
# shellcheck source-path=SCRIPTDIR/../.. source=scripts/lib/private-scheduler.sh
. "$root/scripts/lib/private-scheduler.sh"
# shellcheck source-path=SCRIPTDIR/../.. source=scripts/lib/simulated-printer.sh
. "$root/scripts/lib/simulated-printer.sh"

work=$(mktemp -d)
fresh_pid=
on_exit "fresh_stop; scheduler_stop; printer_stop; rm -rf '$work'"
scheduler_start "$FILTER"
printer_start "$SIMULATOR" --total 700 --remaining 350 --count-prints
echo 'a picture' >"$work/picture"
: >"$work/log"

# A device that takes no connection: what is printed there waits for it.
# shellcheck disable=SC2034 # for the tests
NOBODY='socket://127.0.0.1:9/?snmp=false'
LONG=120 # seconds: more than any wait of keep-fresh that a test is about

# wait_for COMMAND [ARGUMENT...]: waits until it succeeds.
wait_for() { wait_until "$LONG" "$@"; }

# restart [SETTING]: ends the scheduler and starts it again, with one more line of cupsd.conf.
restart() {
  end_child "$scheduler_pid"
  for setting; do echo "$setting" >>"$scheduler_dir/etc/cupsd.conf"; done
  run_scheduler
}
run_scheduler() {
  scheduler_run_cupsd
  wait_for scheduler_is_settled || give_up 'the scheduler' 'does not answer' 'answers'
}

# add_queues NAME...: queues in front of the printer; a queue of this PPD file is attached.
add_queues() {
  local name
  for name; do scheduler_add_queue "$name" "$(printer_uri)"; done
}

# fresh_start ARGUMENT...: starts velmoctl keep-fresh, behind the words of fresh_prefix.
fresh_prefix=()
fresh_start() {
  scheduler_exec "${fresh_prefix[@]}" "$VELMOCTL" keep-fresh "$@" 2>>"$work/log" &
  fresh_pid=$!
}

# Ends it, also where a test has stopped it; its exit status is in $fresh_status.
fresh_stop() {
  [[ $fresh_pid ]] || return 0
  end_child "$fresh_pid"
  # shellcheck disable=SC2034,SC2154 # for the tests; set by end_child
  fresh_status=$child_status
  fresh_pid=
}

# log_count TEXT: how many lines of the log have it.
log_count() { grep -cF -e "$1" "$work/log" || true; }
log_has() { (($(log_count "$1") >= ${2-1})); }

# asks_of QUEUE: the numbers of the jobs that it has sent there.
asks_of() { QUEUE="<6>$1: asks its printer, job " awk '
  index($0, ENVIRON["QUEUE"]) == 1 { print $NF }' "$work/log"; }
count_asks() { asks_of "$1" | grep -c . || true; }
was_asked() { (($(count_asks "$1") >= $2)); }

# wait_log TEXT: waits until the log has it.
wait_log() { wait_for log_has "$1" || give_up 'the log' "$(<"$work/log")" "something with $1"; }

# wait_asked QUEUE TIMES: waits until its printer was asked so often.
wait_asked() {
  wait_for was_asked "$@" || give_up "how often $1 was asked" "$(count_asks "$1")" "$2"
}

# print QUEUE [OPTION...]: prints there. command_job QUEUE: has somebody else send a command job.
print() { scheduler_client lp -d "$1" -o raw "${@:2}" "$work/picture" >/dev/null; }
command_job() {
  scheduler_client lp -U somebody -d "$1" -o document-format=application/vnd.cups-command - \
    >/dev/null <<<$'#CUPS-COMMAND\nReportLevels'
}
message_is() { [[ $(scheduler_printer_attribute "$1" marker-message) == "$2" ]]; }
wait_message() {
  wait_for message_is "$@" ||
    give_up "what $1 shows" "$(scheduler_printer_attribute "$1" marker-message)" "$2"
}
jobs_of() { scheduler_printer_attribute "$1" queued-job-count; }
no_jobs() { [[ $(jobs_of "$1") == 0 ]]; }
wait_no_jobs() { wait_for no_jobs "$1" || give_up "jobs on $1" "$(jobs_of "$1")" 0; }

is_processing() { [[ $(scheduler_printer_attribute "$1" printer-state) == processing ]]; }
wait_processing() { wait_for is_processing "$1" || give_up "the queue $1" 'is idle' 'is processing'; }

# The subscriptions that the scheduler has.
subscriptions() {
  scheduler_client ipptool -tv "$(scheduler_uri '')" get-subscriptions.test 2>&1 |
    sed -n 's/^ *notify-subscription-id (integer) = //p'
}

# subscribe: somebody else takes a place in the scheduler's list. unsubscribe ID: takes one away.
subscribe() { subscription_request create-subscription; }
unsubscribe() { subscription_request cancel-subscription -d "id=$1"; }
subscription_request() {
  expect_that "$1" scheduler_client ipptool -t "${@:2}" "$(scheduler_uri '')" \
    "$root/tests/fresh/$1.test"
}

# created JOB: the second in which the scheduler got it.
created() {
  scheduler_client ipptool -tv -d "job=$1" "$(scheduler_uri '')" \
    "$root/tests/fresh/job-creation.test" 2>&1 | scheduler_answered time-at-creation
}

# most_asks_at_once QUEUE: of its asks, how many were not completed at the same time, as the
# scheduler's log has it.
most_asks_at_once() {
  asks_of "$1" | awk '
    NR == FNR { ask["[Job " $1 "]"] = 1; next }
    { id = $4 " " $5 }
    !(id in ask) { next }
    / Queued on / { open += 1; if (open > most) most = open }
    / (Job (completed|canceled|aborted|purged)|Canceling stuck job)/ && !(id in ended) { ended[id] = 1; open -= 1 }
    END { print most + 0 }' - "$scheduler_log"
}
