#!/bin/bash
# A script that is interrupted while a job runs leaves no process and no file behind.
set -eu
# shellcheck source-path=SCRIPTDIR/../.. source=scripts/lib/wait-until.sh
. "$(dirname "$0")/../../scripts/lib/wait-until.sh"
# shellcheck source-path=SCRIPTDIR/../.. source=tests/harness/expect.sh
. "$(dirname "$0")/../harness/expect.sh"

TMPDIR=$(mktemp -d)
export TMPDIR
chmod 0711 "$TMPDIR"
trap 'rm -rf "$TMPDIR"' EXIT

# The script to interrupt: it does so itself, at the moment when the filter waits for the
# printer's answer, and writes before which processes belong to it.
interrupt_itself() {
  bash -eu -s "$(dirname "$0")/ring.sh" <<'END'
. "$1"
printer_start "$SIMULATOR" --silent
scheduler_start "$FILTER"
scheduler_add_queue photo "$(printer_uri)"
scheduler_send_command photo ReportStatus
wait_until 30 printer_said 'heard status query' 0
echo "$printer_pid" "$scheduler_pid" "$(scheduler_job_log | sed -n 's/^Started .* (PID \([0-9]*\))$/\1/p' | paste -sd ' ')"
kill -TERM $$
echo 'not interrupted'
END
}

# Whether a process has ended, even if its parent has not taken note yet.
# shellcheck disable=SC2317 # wait_until calls it
has_ended() {
  [[ ! -e /proc/$1 ]] || grep -q '^State:.*zombie' "/proc/$1/status"
}

status=0
written=$(interrupt_itself) || status=$?
read -ra pids <<<"$written"
expect 'the exit status' "$status" 143
expect "the number of processes of one job ($written)" "${#pids[@]}" 4
for pid in "${pids[@]}"; do
  expect_that "process $pid has ended" wait_until 10 has_ended "$pid"
done
expect 'the files that are left' "$(ls -A "$TMPDIR")" ''
expect_end
