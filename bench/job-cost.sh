# shellcheck shell=bash disable=SC2154 # private-scheduler.sh sets what is not set here
# What jobs cost a private scheduler and its programs. Sourced behind private-scheduler.sh by a script
# that sets `results`, a file for what is measured.

# As on a print server: the default level of the log, nothing kept of an ended job.
use_server_settings() {
  sed -i 's/^LogLevel .*/LogLevel warn\nPreserveJobFiles No/' "$scheduler_dir/etc/cupsd.conf"
  kill -HUP "$scheduler_pid"
  sleep 3
}

# Looks into the spool, because a question to the scheduler would be measured with the jobs.
jobs_are_done() {
  ! compgen -G "$scheduler_dir/spool/d*" >/dev/null
}

# So far: microseconds of the scheduler's CPU, and of that of its programs.
spent() {
  local cpu programs
  cpu=$(awk '{ ns += $1 } END { printf "%d", ns / 1000 }' "/proc/$scheduler_pid"/task/*/schedstat)
  programs=$(awk -v tick="$(getconf CLK_TCK)" '{ print ($16 + $17) * 1e6 / tick }' \
    "/proc/$scheduler_pid/stat")
  echo "$cpu $programs"
}

# send_jobs QUEUE...: one job to each queue; returns when all have ended.
send_jobs() {
  local queue
  for queue; do scheduler_send_command "$queue" ReportLevels; done
  wait_until 120 jobs_are_done || scheduler_fail 'the jobs do not end'
  # The scheduler reads on for a moment after the last file is gone.
  sleep 0.2
}

# run_jobs NAME QUEUE...: sends jobs and notes what they took together.
run_jobs() {
  local name=$1 before start
  shift
  before=$(spent)
  start=$EPOCHREALTIME
  send_jobs "$@"
  echo "$name $# $start $EPOCHREALTIME $before $(spent)" >>"$results"
}

# row NAME: means of all that ran under this name.
row() {
  awk -v name="$1" '
    $1 == name { jobs += $2; wall += $4 - $3; cpu += $7 - $5; own += $8 - $6 }
    END { printf "%.2f | %.1f | %.2f", cpu / jobs / 1000, own / jobs / 1000, wall / jobs }
  ' "$results"
}
