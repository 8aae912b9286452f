# shellcheck shell=bash disable=SC2154 # ring.sh sets what is not set here
# What becomes of a job and of its queue, as a case of this ring expects it. Sourced by ring.sh.

# How the filter ended; nothing while it runs.
filter_end() { scheduler_job_log | sed -n 's,^PID [0-9]* (.*/commandtovelmo) ,,p'; }
filter_has_ended() { [[ $(filter_end) ]]; }
wait_filter() {
  wait_for filter_has_ended ||
    give_up "$queue: the filter, which did \"$(transcript | cut -c 1-200)\"" 'still running' ended
}

shows() {
  local answer attribute line=''
  answer=$(scheduler_client timeout 60 ipptool -tv "$(scheduler_uri "printers/$queue")" \
    "$root/tests/usb/queue.test" 2>&1)
  for attribute in marker-levels marker-message marker-names printer-state-reasons; do
    line+="; $(scheduler_answered "$attribute" <<<"$answer")"
  done
  echo "${line#; }"
}
shows_that() { [[ $(shows) == "$1" ]]; }

# expect_shows TITLE SHOWN: what the queue shows when the filter has ended. The scheduler may take
# note of a program's end before it has read all that the program wrote.
expect_shows() {
  wait_filter
  wait_until 30 shows_that "$2" ||
    give_up "$queue, $1: what the queue shows, when the filter did \"$(transcript | cut -c 1-200)\"" "$(shows)" "$2"
  expect "$queue, $1: what the queue shows" "$(shows)" "$2"
}

# The filter's side of the conversation with the printer, in a few words.
transcript() {
  scheduler_job_log | awk '
    function put(word) { line = line (line == "" ? "" : " ") word }
    /^Unable to retrieve supply status/ { match($0, /[(][0-9]+[)]$/); put("one-way" substr($0, RSTART)) }
    $0 == "wr_esc_wakeup() START" { put("wake-up") }
    /^====> command=/ { split($0, part, /[][]/); put(part[2]) }
    $0 == "get_printer_info() START" { put("asks") }
    /^\[STS\] size=/ { put(substr($0, 12) " bytes") }
    /^cupsBackChannelRead\(\) failed/ { put("nothing came") }
    /^f(write|flush)\(\) failed/ { put("cannot write") }
    $0 == "#retry over" { put("never awake") }
    END { print line }'
}

# expect_job TITLE SHOWN TRANSCRIPT: of the job sent last, when its filter has ended.
expect_job() {
  expect_shows "$1" "$2"
  expect "$queue, $1: what the filter did" "$(transcript)" "$3"
}

job_has_ended() { scheduler_job_log | grep -qE '^(Job (completed|aborted|canceled|stopped)|Canceled|Canceling)'; }
backend_waits() { job_logged 'Waiting for read thread to exit'; }
job_is_settled() { job_has_ended || backend_waits; }

# expect_end_of_job TITLE STATE: the job's end. When all is sent, the backend waits for seconds on a
# printer that says nothing, and goes at once when an empty packet comes.
expect_end_of_job() {
  wait_for job_is_settled ||
    give_up_text "$queue, $1: the job's log" "should come: the job's end" "$(scheduler_job_log | tail -n 25)"
  job_has_ended || tell 'stale 0'
  expect_state "$1: the job's end" "$2"
}

# expect_state TITLE STATE: in which the job sent last has ended.
expect_state() {
  local state
  state=$(scheduler_ask '' job-end job-state -d job="$scheduler_job") ||
    give_up "$queue, $1" 'still running' "$2"
  expect "$queue, $1" "$state" "$2"
}

# job_is_right TITLE: a job with both directives, from its beginning to its end.
job_is_right() {
  send ReportLevels ReportStatus
  expect_job "$1" "$GOOD" "$ASKED_BOTH"
  expect_end_of_job "$1" completed
}
