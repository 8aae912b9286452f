#!/bin/bash
# velmoctl list tells of settings of the scheduler that can stop a server with that many queues.
set -eu
# shellcheck source=tests/admin/ring.sh
. "$(dirname "$0")/ring.sh"

# restart_with LINE...: the scheduler once more, with these lines in its cupsd.conf.
cp "$scheduler_dir/etc/cupsd.conf" "$work/cupsd.conf"
restart_with() {
  end_child "$scheduler_pid"
  {
    cat "$work/cupsd.conf"
    [[ $# -eq 0 ]] || printf '%s\n' "$@"
  } >"$scheduler_dir/etc/cupsd.conf"
  scheduler_run_cupsd
  wait_until 60 scheduler_is_settled || scheduler_fail 'it does not come back'
}

make_queue photo "$RASTER"
make_queue twin "$RASTER"
make_queue plain "$RASTER"
ctl attach --no-ask photo twin
expect_done 'attach'
LISTED=$'photo: attached\nplain: not attached\ntwin: attached'

ctl list
expect 'settings as they come' "$status $errors $said" "0  $LISTED"
restart_with 'MaxJobs 2' 'FilterLimit 200'
ctl list
expect 'settings that are enough for the attached queues' "$status $errors $said" "0  $LISTED"
restart_with 'MaxJobs 1' 'FilterLimit 199'
ctl list
expect 'settings that are too little: what is listed' "$status $said" "0 $LISTED"
expect 'settings that are too little: what is told' "$errors" \
  "velmoctl: MaxJobs 1 is too little for 2 attached queues: when so many jobs wait for printers that are off, the scheduler takes none for any queue; set MaxJobs 4 in cupsd.conf
velmoctl: FilterLimit 199 is too little for 2 attached queues: it limits the jobs that run at once to 1, and when so many printers are off, all others wait; set FilterLimit 0 in cupsd.conf"
ctl list --json
expect_part 'settings that are too little, with --json: the array' "$status $said" $'0 [\n'
expect_part 'settings that are too little, with --json: what is told' "$errors" 'velmoctl: MaxJobs 1 '

# --- it is true: a job before a printer that is off fills MaxJobs, so another queue takes none
scheduler_send_command photo ReportLevels
wait_until 60 grep -q 'Started backend' "$scheduler_log" || give_up_text 'a job before a printer that is off' 'should start' "$(<"$scheduler_log")"
ctl ask twin
expect 'MaxJobs 1: another queue is asked' "$status $said" '1 '
expect_part 'MaxJobs 1: another queue is asked' "$errors" 'Too many active jobs.'

scheduler_client cancel -a photo
restart_with 'FilterLimit 199'
scheduler_send_command photo ReportLevels
scheduler_send_command twin ReportLevels
is_held() { grep -q 'Holding because filter limit has been reached.' "$scheduler_log"; }
wait_until 60 is_held || give_up_text 'FilterLimit 199: the job of another queue' 'should be held' "$(tail -n 20 "$scheduler_log")"
scheduler_client cancel -a photo twin

# --- one that may not read them is neither asked for a password nor told
restart_with 'MaxJobs 1' '<Location /admin/conf>' 'AuthType Basic' 'Require user nobody-at-all' '</Location>'
run_ctl setsid --wait "$VELMOCTL" list </dev/null
expect 'a user that the settings are not shown to' "$status $errors $said" "0  $LISTED"
expect_end
