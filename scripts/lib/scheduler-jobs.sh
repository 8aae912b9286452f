# shellcheck shell=bash disable=SC2154 # private-scheduler.sh sets what is not set here
# Queues and jobs of the private scheduler, and what it says of them over IPP. Sourced by
# private-scheduler.sh.

# scheduler_add_queue NAME URI [PPD]: adds a queue, or sets it up anew.
scheduler_add_queue() {
  local answer
  answer=$(scheduler_client lpadmin -p "$1" -E -v "$2" \
    -P "${3:-$scheduler_files/scheduler/velmo-minimal.ppd}" 2>&1) ||
    scheduler_fail "the queue $1 could not be added: $answer"
}

# scheduler_send_command QUEUE DIRECTIVE...: queues a command job with these directives.
scheduler_send_command() {
  local answer
  answer=$(printf '%s\n' '#CUPS-COMMAND' "${@:2}" |
    scheduler_client lp -d "$1" -o document-format=application/vnd.cups-command 2>&1) ||
    scheduler_fail "the queue $1 did not take the job: $answer"
  answer=${answer% (*}  # request id is photo-7 (0 file(s))
  scheduler_job=${answer##*-}
}

# socket_uri SOCKET PATH: what a client calls a scheduler's socket file, or what lies below it.
socket_uri() {
  local socket=$1
  socket=${socket//%/%25}
  socket=${socket// /%20}
  echo "ipp://${socket//\//%2F}/$2"
}
scheduler_uri() { socket_uri "$scheduler_dir/clients/socket" "$1"; }

# scheduler_answered ATTRIBUTE: writes the attribute's value from what ipptool writes, which comes
# on standard input. Before the answer ipptool echoes the request, where the name stands elsewhere.
scheduler_answered() {
  ATTRIBUTE=$1 awk '
    { sub(/^ */, "") }
    index($0, ENVIRON["ATTRIBUTE"] " (") == 1 && sub(/^[^(]*[(][^)]*[)] = /, "")'
}

# Writes what the log holds of the job sent last, without the level and the time of each line.
scheduler_job_log() {
  JOB="[Job $scheduler_job] " awk '
    sub(/^[A-Z] \[[^]]*\] /, "") && index($0, ENVIRON["JOB"]) == 1 {
      print substr($0, length(ENVIRON["JOB"]) + 1)
    }' "$scheduler_log"
}

# scheduler_filter_has_started FILTER: whether the job sent last runs it.
scheduler_filter_has_started() {
  scheduler_job_log | grep -qF "Started filter $scheduler_dir/bin/filter/$1 "
}

# Writes what the log holds of filters that failed, crashed, or are not to be used.
scheduler_complaints() {
  grep -E 'cups-[a-z-]*-warning|Filter failed|crashed|stopped with status' "$scheduler_log" || true
}

# scheduler_ask PATH REQUEST ATTRIBUTE [OPTION...]: sends one of the requests in
# scripts/lib/scheduler over IPP and writes the attribute's value from the answer, several
# values separated by commas, nothing when it is not there.
scheduler_ask() {
  local answer
  answer=$(scheduler_client timeout 120 ipptool -tv -d attribute="$3" "${@:4}" \
    "$(scheduler_uri "$1")" "$scheduler_files/scheduler/$2.test" 2>&1) ||
    scheduler_fail "no answer about $3:"$'\n'"$(tail -n 3 <<<"$answer")"
  scheduler_answered "$3" <<<"$answer"
}

# Waits until the job sent last runs no more, and fails unless it was completed.
scheduler_wait_job() {
  local state
  state=$(scheduler_ask '' job-end job-state -d job="$scheduler_job") || state='still running'
  [[ $state == completed ]] || {
    scheduler_job_log | tail -n 20 >&2
    scheduler_fail "job $scheduler_job is not completed but $state; above are its last log lines"
  }
}

# scheduler_printer_attribute QUEUE ATTRIBUTE: writes what the scheduler says of a queue.
scheduler_printer_attribute() {
  scheduler_ask "printers/$1" printer-attribute "$2"
}
