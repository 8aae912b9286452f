# shellcheck shell=bash disable=SC2034,SC2154 # shares its variables with what it sources
# One queue of the soak: its printer, its jobs, and what it shows after each of them.
#
# Sourced by a script that has started the private scheduler.

# shellcheck source=tests/scheduler/soak/oracle.sh
. "${BASH_SOURCE[0]%/*}/oracle.sh"
# shellcheck source=tests/scheduler/soak/random-printer.sh
. "${BASH_SOURCE[0]%/*}/random-printer.sh"

# Gives the printer all its orders, and returns when it has taken them.
set_printer() {
  local before orders="error $error
total $total
remaining $remaining
ink-sheet $sheet
$manner"
  before=$(printer_count 'now: ')
  echo "$orders" >"$printer_dir/orders"
  wait_until 60 printer_said 'now: ' $((before + $(wc -l <<<"$orders") - 1)) ||
    printer_fail "it did not take: $orders"
}

# send_job QUEUE: runs a job of `directives` to its end; answer holds what IPP said of it.
send_job() {
  printf '%s\n' '#CUPS-COMMAND' "${directives[@]}" >"$printer_dir/job"
  answer=$(scheduler_client timeout 600 ipptool -tv -f "$printer_dir/job" \
    "$(scheduler_uri "printers/$1")" "${BASH_SOURCE[0]%/*}/job.test" 2>&1) ||
    scheduler_fail "the queue $1: $(tail -n 5 <<<"$answer")"
}

# What IPP said last of an attribute. While a job is waited for, its state is said often.
answered() {
  scheduler_answered "$1" <<<"$answer" | tail -n 1
}

# Compares what a queue shows with the oracle; a difference comes with all that led to it.
compare() {
  local is
  is=$(answered job-state)
  for attribute in printer-state-reasons marker-{colors,levels,message,names,types}; do
    is+="|$(answered "$attribute")"
  done
  expect "queue $1, job $(answered job-id | head -n 1), directives ${directives[*]:0:4}, printer error \
$error, total $total, remaining $remaining, ink-sheet $sheet, ${manner//$'\n'/, }" "$is" \
    "completed|$shown_reasons|$shown_colors|$shown_levels|$shown_message|$shown_names|$shown_types"
}

# play_queue NUMBER JOBS: plays a queue to its end, or until it shows something else than it
# should. The first job done is told by a file, and answered by another.
play_queue() {
  local queue=soak$1 connection=twoway job
  printer_dir='' printer_pid=''
  on_exit printer_stop
  RANDOM=$((seed * 100 + $1))
  printer_start "$SIMULATOR"
  # One queue in eight has a backend that carries no answers.
  (($1 % 8)) || connection=oneway
  if [[ $connection == twoway ]]; then
    scheduler_add_queue "$queue" "$(printer_uri)"
  else
    scheduler_add_queue "$queue" oneway:/no
  fi

  oracle_start
  for ((job = 1; job <= $2; ++job)); do
    random_state
    random_manner
    [[ $connection == twoway ]] || answers=no
    random_job
    [[ $connection == oneway ]] || set_printer
    oracle_job "$connection" "${directives[@]}"
    send_job "$queue"
    compare "$queue"
    ((failures == 0)) || exit 1
    echo "$job" >"$soak_dir/done.$1"
    ((job > 1)) || wait_until 600 test -e "$soak_dir/go"
  done
  exit 0
}
