#!/bin/bash
# velmoctl status of several servers: three real schedulers, of which one hangs and one goes.
set -eu
# shellcheck source=tests/admin/ring.sh
. "$(dirname "$0")/ring.sh"

# --- each with a queue of its own, and all with the queue photo
dirs=() pids=()
keep() { dirs+=("$scheduler_dir") pids+=("$scheduler_pid"); }
# use NUMBER: which of them is spoken with without -h.
use() { scheduler_dir=${dirs[$1]} scheduler_pid=${pids[$1]}; }
stop_all() {
  local number
  for number in "${!dirs[@]}"; do
    use "$number"
    scheduler_stop
  done
}
on_exit "scheduler_stop; stop_all; rm -rf '$work'"
# settle NAME: gives the one just started its queues.
settle() {
  keep
  make_queue photo "$RASTER"
  make_queue "$1" "$RASTER"
  ctl attach --no-ask photo "$1"
  expect_done "attach on the server of $1"
}
settle hall
scheduler_start "$FILTER"
settle desk
scheduler_start "$FILTER"
settle booth
a=${dirs[0]}/clients/socket b=${dirs[1]}/clients/socket c=${dirs[2]}/clients/socket
ALL=(-h "$a" -h "$b" -h "$c")

# ctl_of_all ARGUMENT...: asks all three, and again while one that runs is too busy for a word.
ctl_of_all() {
  wait_until 200 is_told "$@" || give_up_text "status $*" 'should tell of each that runs' "$said $errors"
}
hanging='' # the server that is to be told as such
is_told() {
  local server
  ctl status "${ALL[@]}" "$@"
  for server in "$a" "$b" "$c"; do
    [[ $server == "$hanging" || $said$errors != *"$server: does not answer"* ]] || return 1
  done
}
heads() { grep -v '^ ' <<<"$said"; }
values_of() { sed -n "s/^    \"$1\": \(.*\),\$/\1/p" <<<"$said"; }

# --- one table
use 1
scheduler_client cupsdisable desk
ctl_of_all
expect_done 'three servers'
expect 'the worst of all comes first' "$(heads)" "desk@$b  queue stopped
hall@$a  never asked
photo@$a  never asked
photo@$b  never asked
booth@$c  never asked
photo@$c  never asked"
ctl_of_all photo
expect 'a queue that all have' "$status $errors $(heads)" "0  photo@$a  never asked
photo@$b  never asked
photo@$c  never asked"
ctl_of_all hall booth
expect 'queues that one server has' "$status $errors $(heads)" "0  hall@$a  never asked
booth@$c  never asked"
ctl_of_all hall nowhere
expect 'a queue that no server has' "$status $errors $(heads)" \
  "1 velmoctl: nowhere: there is no such queue; velmoctl list names those there are hall@$a  never asked"
ctl_of_all --check hall
expect_part 'check: the server' "$status $said" "3 VELMO UNKNOWN - hall@$a: never asked"

# --- one hangs, one goes
kill -STOP "${pids[1]}"
hanging=$b
use 2
scheduler_stop
pids[2]='' dirs[2]=''
use 0
ctl_of_all
expect 'away: status and errors' "$status $errors" "1 velmoctl: $b: does not answer within 3 s
velmoctl: $c: cannot be reached"
expect 'away: the rest is shown' "$(heads)" "hall@$a  never asked
photo@$a  never asked"
ctl_of_all --check
expect 'away: check' "$status $(grep -o '^[^|]*[^| ]' <<<"$said")" "3 VELMO UNKNOWN - hall@$a: never asked
VELMO UNKNOWN - photo@$a: never asked
VELMO UNKNOWN - $b: does not answer within 3 s
VELMO UNKNOWN - $c: cannot be reached"
ctl_of_all --json
expect_refused 'away: json' "velmoctl: $b: does not answer within 3 s"
expect_that 'away: json fits the schema' python3 "$root/tests/admin/validate.py" \
  "$root/docs/velmoctl-status.schema.json" <<<"$said"
expect 'away: json: the servers' "$(values_of server)" "\"$a\"
\"$a\"
\"$b\"
\"$c\""
expect 'away: json: the verdicts' "$(values_of verdict | uniq)" $'"never-asked"\n"scheduler-not-reachable"'
ctl_of_all nowhere
expect 'away: a queue that the others do not have' "$status $errors" \
  "1 velmoctl: nowhere: there is no such queue; velmoctl list names those there are
velmoctl: $b: does not answer within 3 s
velmoctl: $c: cannot be reached"

# --- many hang: one after the other they would take a minute
many=()
for ((i = 0; i < 20; ++i)); do many+=(-h "$b"); done
begun=$SECONDS
ctl status "${many[@]}"
expect 'many: each is told' "$(grep -cxF "velmoctl: $b: does not answer within 3 s" <<<"$errors")" 20
expect_that 'many: at the same time' test $((SECONDS - begun)) -lt 40

# --- one answers once, and then no more
python3 "$root/tests/admin/half_server.py" >"$work/port" 2>"$work/half-server" &
half=$!
on_exit "end_child $half; scheduler_stop; stop_all; rm -rf '$work'"
wait_until 60 test -s "$work/port" || give_up_text 'the server that answers once' 'should tell its port' "$(<"$work/half-server")"
h=127.0.0.1:$(<"$work/port")
silent="velmoctl: $h: the scheduler gave no answer; its error_log says why"
ctl status -h "$a" -h "$h"
expect 'falls silent: status and errors' "$status $errors" "1 $silent"
expect 'falls silent: the rest is shown' "$(heads)" "hall@$a  never asked
photo@$a  never asked"
ctl status --json -h "$a" -h "$h"
expect 'falls silent: json: the servers' "$(values_of server)" "\"$a\"
\"$a\"
\"$h\""
end_child "$half"

# --- the system has no room for threads: so large a stack. The sanitizers need more room than that.
small() { (ulimit -s 8000000 && ulimit -v 4000000 && "$@") 2>/dev/null; }
if small "$VELMOCTL" --version >/dev/null; then
  ctl_small() { (ulimit -s 8000000 && ulimit -v 4000000 && ctl "$@" && echo "$status $errors"); }
  none='cannot be asked: the system has no room for one more thread'
  expect 'no threads' "$(ctl_small status -h "$a" -h "$b")" "1 velmoctl: $a: $none
velmoctl: $b: $none"
fi

# --- it comes back while somebody looks on
scheduler_exec "$VELMOCTL" status --watch -h "$a" -h "$b" >"$work/screen" 2>"$work/watch-errors" &
watcher=$!
on_exit "end_child $watcher; scheduler_stop; stop_all; rm -rf '$work'"
told() { (($(grep -cxF "velmoctl: $b: does not answer within 3 s" "$work/watch-errors") >= $1)); }
wait_until 60 told 2 || give_up_text 'a second round' 'should tell of the hanging one' "$(<"$work/watch-errors")"
expect_part 'the other is shown meanwhile' "$(<"$work/screen")" "hall@$a  never asked"
expect_no_part 'and the hanging one is not' "$(<"$work/screen")" "@$b"
kill -CONT "${pids[1]}"
shown() { grep -qxF "desk@$b  queue stopped" "$work/screen"; }
wait_until 60 shown || give_up_text 'it is back' "should show desk@$b" "$(<"$work/screen")"
end_child "$watcher"

# --- the other commands speak with one
for command in list 'ask photo' 'attach photo' 'detach photo' 'keep-fresh photo'; do
  # shellcheck disable=SC2086 # a command with its queue
  ctl $command -h "$a" -h "$b"
  expect "$command" "$status $said$errors" "2 velmoctl: ${command% *} takes one -h; status takes several"
done
expect_end
