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

# scheduler_ask PATH REQUEST ATTRIBUTE [OPTION...]: sends one of the requests in
# scripts/lib/scheduler over IPP and writes the attribute's value from the answer, several
# values separated by commas, nothing when it is not there.
scheduler_ask() {
  local host answer
  host=$(sed 's/%/%25/g; s/ /%20/g; s,/,%2F,g' <<<"$scheduler_dir/clients/socket")
  answer=$(scheduler_client timeout 120 ipptool -tv -d attribute="$3" "${@:4}" \
    "ipp://$host/$1" "$scheduler_files/scheduler/$2.test" 2>&1) ||
    scheduler_fail "no answer about $3:"$'\n'"$(tail -n 3 <<<"$answer")"
  # The request is echoed before the answer; there, ATTRIBUTE stands on the right only.
  sed -n "s/^ *$3 ([^)]*) = //p" <<<"$answer"
}

# Waits until the job sent last runs no more, and fails unless it was completed.
scheduler_wait_job() {
  local state
  state=$(scheduler_ask '' job-end job-state -d job="$scheduler_job") || state='still running'
  [[ $state == completed ]] || {
    grep -F "[Job $scheduler_job]" "$scheduler_log" | tail -n 20 >&2
    scheduler_fail "job $scheduler_job is not completed but $state; above are its last log lines"
  }
}

# scheduler_printer_attribute QUEUE ATTRIBUTE: writes what the scheduler says of a queue.
scheduler_printer_attribute() {
  scheduler_ask "printers/$1" printer-attribute "$2"
}
