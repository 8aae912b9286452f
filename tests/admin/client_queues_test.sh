#!/bin/bash
# Queues of a client that pass their jobs on to another server, whose queues are attached: what
# becomes of command jobs, levels, errors and classes, and what while the server is away.
set -eu
# shellcheck source=tests/admin/ring.sh
. "$(dirname "$0")/ring.sh"

# --- the server, which other schedulers reach over TCP: two queues, and a class over both
printer_start "$SIMULATOR" --total 700 --remaining 350
port=$(python3 -c 'import socket
with socket.create_server(("127.0.0.1", 0)) as free: print(free.getsockname()[1])')
end_child "$scheduler_pid"
echo "Listen 127.0.0.1:$port" >>"$scheduler_dir/etc/cupsd.conf"
scheduler_run_cupsd
wait_until 30 scheduler_is_settled || give_up 'the server' 'silent' 'there with a TCP port'
make_ppd "$work/given" "$RASTER"
scheduler_add_queue photo "$(printer_uri)" "$work/given"
scheduler_add_queue twin "$(printer_uri)" "$work/given"
ctl attach --no-ask photo twin
expect_done 'attach on the server'
for name in photo twin; do scheduler_client lpadmin -p "$name" -c group 2>/dev/null; done
scheduler_client cupsenable group
scheduler_client cupsaccept group

# --- the client
server_dir=$scheduler_dir server_pid=$scheduler_pid
end_server() {
  scheduler_stop
  scheduler_dir=$server_dir scheduler_pid=$server_pid
  scheduler_stop
  printer_stop
}
on_exit "end_server; rm -rf '$work'"
scheduler_start "$FILTER"
on_server() {
  local scheduler_dir=$server_dir
  "$@"
}
scheduler_client lpadmin -p photo -E -v "ipp://127.0.0.1:$port/printers/photo" 2>/dev/null
scheduler_client lpadmin -p group -E -v "ipp://127.0.0.1:$port/classes/group" 2>/dev/null
levels() { echo "$(on_server queue_attribute photo marker-levels) $(queue_attribute photo marker-levels)"; }
level_is() { [[ $(levels) == "$1" ]]; }

# --- a command job goes on to the server, whose filter asks the printer; the client copies the level
scheduler_send_command photo ReportLevels ReportStatus
scheduler_wait_job
wait_until 30 level_is '50 50' || give_up 'the level, server and client' "$(levels)" '50 50'
ctl status photo
expect_part 'the client shows it' "$said" '50 %   350 of 700 prints'
expect_part 'though it is not attached there' "$said" 'photo  not attached'

# --- so it does with the printer's errors, as long as jobs go through
printer_tell error 06 02 02
scheduler_send_command photo ReportLevels ReportStatus
scheduler_wait_job
reason() { queue_attribute photo printer-state-reasons; }
reason_is() { [[ $(reason) == "$1" ]]; }
wait_until 30 reason_is com.velmo-error0001 || give_up 'the error at the client' "$(reason)" com.velmo-error0001
printer_tell error 00 00 00
scheduler_send_command photo ReportLevels ReportStatus
scheduler_wait_job
wait_until 30 reason_is none || give_up 'the error is gone' "$(reason)" none

# --- what the server learns by itself stays there
printer_tell remaining 210
ctl -h "127.0.0.1:$port" ask photo
expect_done 'ask at the server'
expect 'the level, server and client' "$(levels)" '30 50'
ctl status -h "127.0.0.1:$port" photo
expect_part 'status of the server has it' "$said" '30 %   210 of 700 prints'
ctl ask photo
expect_refused 'ask at the client' 'velmoctl: photo: is not attached'
ctl attach photo
expect_refused 'attach at the client' \
  'velmoctl: photo: its PPD file is on another server; name that one with -h'

# --- a client queue with a PPD file takes no command jobs, and attached it asks nobody
make_ppd "$work/given" "$RASTER"
scheduler_add_queue driver "ipp://127.0.0.1:$port/printers/photo" "$work/given"
answer=$(scheduler_client lp -d driver -o document-format=application/vnd.cups-command \
  "$root/tests/admin/ring.sh" 2>&1) || true
expect 'a command job for a queue with a PPD file' "$answer" \
  'lp: Unsupported document-format "application/vnd.cups-command".'
ctl attach --no-ask driver
expect_part 'attached: it is warned of' "$errors" \
  'the backend of a device ipp: passes no answers of the printer on'

# --- a class takes a command job for one of its members, by turns, and passes no level on
level_of() { on_server queue_attribute "$1" marker-levels; }
send_to_class() {
  scheduler_send_command group ReportLevels ReportStatus
  scheduler_wait_job
}
members_are() { [[ "$(level_of photo) $(level_of twin)" == "$1" || "$(level_of photo) $(level_of twin)" == "$2" ]]; }
printer_tell remaining 140
send_to_class
wait_until 30 members_are '20 ' '30 20' ||
  give_up 'one member was asked' "$(level_of photo) $(level_of twin)" '20 and nothing, or 30 and 20'
send_to_class
wait_until 30 members_are '20 20' '20 20' ||
  give_up 'then the other' "$(level_of photo) $(level_of twin)" '20 20'
ctl -h "127.0.0.1:$port" status group
expect 'status of a class is that of its members' "$(grep -v '^ ' <<<"$said")" $'photo  ready\ntwin  ready'
expect 'the level of the class at the client' "$(queue_attribute group marker-levels)" ''

# --- a server that is away keeps the job waiting at the client, which says so; nothing is lost
end_child "$server_pid"
printer_tell remaining 70
scheduler_send_command photo ReportLevels ReportStatus
message() { queue_attribute photo printer-state-message; }
AWAY='The printer may not exist or is unavailable at this time.'
message_is() { [[ $(message) == "$1" ]]; }
wait_until 60 message_is "$AWAY" || give_up 'the server is away: the message' "$(message)" "$AWAY"
expect 'the server is away: the level is the old one' "$(queue_attribute photo marker-levels)" 50
client_dir=$scheduler_dir client_pid=$scheduler_pid
scheduler_dir=$server_dir
scheduler_run_cupsd
server_pid=$scheduler_pid
scheduler_dir=$client_dir scheduler_pid=$client_pid
scheduler_wait_job
wait_until 30 level_is '10 10' || give_up 'it is back: the level, server and client' "$(levels)" '10 10'

# --- while it hangs, nothing tells that from a printer that takes its time
printer_tell remaining 7
kill -STOP "$server_pid"
scheduler_send_command photo ReportLevels ReportStatus
wait_until 60 message_is 'Connected to printer.' ||
  give_up 'the server hangs: the message' "$(message)" 'Connected to printer.'
sleep 3
expect 'the server hangs: message and reasons, still' "$(message) $(reason)" 'Connected to printer. none'
kill -CONT "$server_pid"
scheduler_wait_job
wait_until 30 level_is '1 1' || give_up 'it goes on: the level, server and client' "$(levels)" '1 1'
expect_end
