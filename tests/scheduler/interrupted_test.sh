#!/bin/bash
# A script that is interrupted while a job runs leaves no process and no file behind.
set -eu
# shellcheck source-path=SCRIPTDIR/../.. source=scripts/lib/wait-until.sh
. "$(dirname "$0")/../../scripts/lib/wait-until.sh"

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
echo "$printer_pid" "$scheduler_pid" "$(job_log | sed -n 's/^Started .* (PID \([0-9]*\))$/\1/p' | paste -sd ' ')"
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
failures=0
[[ $status == 143 ]] || { echo "FAILED: it ended with status $status"; failures=1; }
[[ ${#pids[@]} == 4 ]] || { echo "FAILED: not the processes of one job: $written"; failures=1; }
for pid in "${pids[@]}"; do
  wait_until 10 has_ended "$pid" || { echo "FAILED: process $pid is left"; failures=1; }
done
[[ -z $(ls -A "$TMPDIR") ]] || { echo "FAILED: files are left: $(ls -A "$TMPDIR")"; failures=1; }
exit "$failures"
