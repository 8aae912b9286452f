# shellcheck shell=bash disable=SC2154 # shares its variables with what it is sourced by
# One queue of the soak: its printer, the photos that are printed there, and what happens to both.

RIBBON=60 # prints; a booth runs out of it now and then
PATIENCE=240 # seconds: more than a printer that was away may take to be asked again

# with_scheduler COMMAND...: runs it while the scheduler is not being restarted.
with_scheduler() {
  local status=0
  flock --shared 9
  "$@" || status=$?
  flock --unlock 9
  return "$status"
}
client() { with_scheduler scheduler_client "$@"; }

# look: asks what the queue shows. shown ATTRIBUTE: of that.
look() {
  answer=$(client timeout 120 ipptool -tv "$(scheduler_uri "printers/$queue")" \
    "$root/tests/fresh/soak/queue.test" 2>&1) ||
    scheduler_fail "no answer about $queue: $answer"
}
shown() { scheduler_answered "$1" <<<"$answer"; }

# The printer's own count, and the reason that follows from it and from the error.
prints_left() {
  awk '/^printed, / { left = $2 } /^now: remaining / { left = $3 } END { print left }' "$printer_dir/heard"
}
reason() {
  if [[ $(prints_left) == 0 ]]; then
    echo com.velmo-error0005
  else
    echo "$error"
  fi
}

load_ribbon() { printer_tell remaining "$RIBBON"; }
switch_on() {
  printer_start "$SIMULATOR" --port "$1" --count-prints --total "$RIBBON"
  printer_tell remaining "$2"
}
# Sets what the printer has when it is switched on again.
switch_off() {
  left=$(prints_left)
  printed=$((printed + $(printer_count 'printed, ')))
  printer_stop
}

print_photos() {
  local i
  for ((i = 0; i < burst; ++i)); do client lp -d "$queue" -o raw "$work/picture" >/dev/null; done
}

# What happens to a queue while photos are printed. An error in the middle of a print: the printer
# takes no more data, and tells the error when it goes on.
off_before() { switch_off && print_photos && sleep 4 && switch_on "$port" "$left"; }
off_after() { print_photos && wait_idle && switch_off && sleep 8 && switch_on "$port" "$left"; }
paused() { client cupsdisable "$queue" && print_photos && sleep 3 && client cupsenable "$queue"; }
caught() { print_photos && client cupsdisable "$queue" && sleep 3 && client cupsenable "$queue"; }
error_within() {
  kill -STOP "$printer_pid"
  print_photos
  echo 'error 06 02 02' >"$printer_dir/orders"
  error=com.velmo-error0001
  sleep 2
  kill -CONT "$printer_pid"
}
new_ribbon() { load_ribbon && print_photos; }
HAPPENINGS=(print_photos off_before paused error_within caught new_ribbon off_after print_photos)

# Whether nothing is left to do; and, besides, whether the queue shows what its printer has.
is_idle() { look && [[ $(shown queued-job-count) == 0 ]]; }
is_right() { is_idle && [[ $(state) == "$(should_be)" ]]; }
state() { echo "$(shown marker-message), $(shown printer-state-reasons)"; }
should_be() { echo "Prints Remaining = $(prints_left) / $RIBBON, $(reason)"; }

# Nobody has to know it at once.
slowly() { "$@" || ! sleep 1; }
wait_idle() {
  wait_until "$PATIENCE" slowly is_idle || expect "$queue: jobs" "$(shown queued-job-count)" 0
}
wait_right() {
  wait_until "$PATIENCE" slowly is_right && return
  expect "$queue after $1, with $(shown queued-job-count) jobs" "$(state)" "$(should_be)"
  return 1
}

# play_booth NUMBER PHOTOS: prints them in bursts over the whole time; ends with status 1 when the
# queue does not show what it should.
play_booth() {
  local queue=booth$1 done=0 round burst happening error=none left printed=0 port answer
  printer_dir='' printer_pid=''
  on_exit printer_stop
  exec 9>"$work/lock"
  RANDOM=$((seed * 100 + $1))
  switch_on 0 "$RIBBON"
  port=$(printer_uri)
  port=${port##*:}
  port=${port%%/*}
  scheduler_add_queue "$queue" "$(printer_uri)"
  touch "$work/ready.$1"
  wait_until "$PATIENCE" test -e "$work/go"

  # Each queue begins with something else.
  for ((round = 2 * $1; done < $2; ++round)); do
    burst=$((1 + RANDOM % 8))
    ((burst <= $2 - done)) || burst=$(($2 - done))
    [[ $error == none ]] || { printer_tell error 00 00 00 && error=none; }
    [[ $(prints_left) != 0 ]] || load_ribbon
    happening=${HAPPENINGS[round % ${#HAPPENINGS[@]}]}
    "$happening"
    wait_right "$happening" || exit 1
    done=$((done + burst))
    echo "$happening" >>"$work/happened"
    sleep_until $((seconds * done / $2))
  done
  printed=$((printed + $(printer_count 'printed, ')))
  expect_that "$queue: all of its $2 photos come out: $printed" test "$printed" -ge "$2"
  echo "$printed" >"$work/printed.$1"
  ((failures == 0)) || exit 1
  exit 0
}
sleep_until() { ((SECONDS >= $1)) || sleep $(($1 - SECONDS)); }
