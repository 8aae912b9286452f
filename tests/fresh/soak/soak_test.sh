#!/bin/bash
# velmoctl keep-fresh for as long as one likes: booths print photos, each on a queue with a printer
# of its own, which is switched off and on, paused, gets new ribbons and runs out of them, and has
# errors in the middle of a print, while the scheduler is restarted. Somebody else reads the list of
# jobs all the time.
# Usage: soak_test.sh PHOTOS SECONDS
# Environment: FILTER, SIMULATOR and VELMOCTL, the executables; SEED, to play a run again.
# shellcheck disable=SC2317 # wait_until and on_exit call functions
set -eu
photos=$1 seconds=$2
BOOTHS=4
SAMPLES=12 # of keep-fresh's memory; the scheduler is restarted after every second one but the last
MEMORY_NOISE=512 # kB

# shellcheck source=tests/fresh/ring.sh
. "$(dirname "$0")/../ring.sh"
# shellcheck source=tests/fresh/soak/booth.sh
. "$(dirname "$0")/booth.sh"

seed=${SEED:-$((RANDOM + 1))}
booths=()
reader=
stop() {
  # shellcheck disable=SC2086 # none, or one
  end_child "${booths[@]}" $reader
  fresh_stop
  scheduler_stop
  printer_stop
  rm -rf "$work"
}
on_exit stop

fresh_status_of() { awk -v name="$1:" '$1 == name { print $2 }' "/proc/$fresh_pid/status"; }
descriptors() { find "/proc/$fresh_pid/fd" -mindepth 1 | wc -l; }
cpu_seconds() {
  awk '{ ns += $1 } END { printf "%.1f", ns / 1e9 }' "/proc/$fresh_pid"/task/*/schedstat
}
total() { awk '{ sum += $1 } END { print sum }' "$@"; }
all_ready() { (($(find "$work" -name 'ready.*' | wc -l) == BOOTHS)); }

# sample: notes keep-fresh's memory, after each second one with a restart of the scheduler.
memory=()
restarts=0
sample() {
  sleep_until $((seconds * $1 / SAMPLES))
  memory+=("$(fresh_status_of VmRSS)")
  (($1 % 2 == 0 && $1 < SAMPLES)) || return 0
  flock --exclusive 9
  restart
  flock --unlock 9
  restarts=$((restarts + 1))
}

printer_stop # Each booth has one of its own.
sed -i 's/^LogLevel .*/LogLevel info/' "$scheduler_dir/etc/cupsd.conf"
restart
exec 9>"$work/lock"
echo "seed $seed"
queues=()
for ((i = 0; i < BOOTHS; ++i)); do
  queues+=("booth$i")
  (play_booth "$i" $(((photos + i) / BOOTHS))) &
  booths+=($!)
done
wait_until "$PATIENCE" all_ready || expect 'the booths' 'are not ready' 'are ready'
scheduler_exec /usr/bin/python3 "$(dirname "$0")/job-list-reader.py" >"$work/looks" &
reader=$!
fresh_start "${queues[@]}"
for queue in "${queues[@]}"; do wait_asked "$queue" 1; done
before=$(descriptors)
SECONDS=0
touch "$work/go"
for ((i = 1; i <= SAMPLES; ++i)); do sample "$i"; done

expect_good_ends booth "${booths[@]}"
took=$SECONDS
booths=()
expect_that 'keep-fresh is still the same process' kill -0 "$fresh_pid"
after=$(descriptors)
expect_that "keep-fresh has no more descriptors than the $before before: $after" test "$after" -le "$before"
expect_that "keep-fresh's memory is flat: ${memory[*]} kB" \
  test $((memory[SAMPLES - 1] - memory[1])) -le "$MEMORY_NOISE"
spent=$(cpu_seconds)
fresh_stop
expect 'a signal ends it' "$fresh_status" 0
for queue in "${queues[@]}"; do wait_no_jobs "$queue"; done

end_child "$reader"
reader=
read -r looks seen most <"$work/looks"
expect 'command jobs of one queue at a time, in the list of jobs' "$most" 1
asks=0
for queue in "${queues[@]}"; do
  expect "$queue: its asks at a time, in the scheduler's log" "$(most_asks_at_once "$queue")" 1
  asks=$((asks + $(count_asks "$queue")))
done

echo "$photos photos on $BOOTHS queues in $took s, of which $(total "$work"/printed.*) prints came out"
echo "what happened, each with some of the photos:"
sort "$work/happened" | uniq -c
echo "restarts of the scheduler: $restarts"
echo "asks: $asks; count and reason were right after each of the $(wc -l <"$work/happened") bursts"
echo "command jobs of one queue at a time: $most at most, in $looks looks at the list of jobs,"
echo "    of which $seen found one; in the end none was left"
echo "memory of keep-fresh, every $((seconds / SAMPLES)) s:"
echo "    ${memory[*]} kB"
echo "its descriptors: $before before, $after after; its processor time: $spent s"
expect_end
