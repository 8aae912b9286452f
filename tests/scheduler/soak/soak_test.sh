#!/bin/bash
# Many command jobs on many queues at a time, each before a printer that chance changes before
# each job: every queue shows what it should after every job, and afterwards the scheduler has
# neither a child nor a descriptor more than before.
# Usage: soak_test.sh JOBS QUEUES
# Environment: FILTER, SIMULATOR and ONEWAY, the executables; SEED, to play a run again.
# shellcheck disable=SC2317 # wait_until and on_exit call functions
set -eu
jobs=$1 queues=$2

# shellcheck source-path=SCRIPTDIR/../../.. source=tests/scheduler/ring.sh
. "$(dirname "$0")/../ring.sh"
# shellcheck source-path=SCRIPTDIR/../../.. source=tests/scheduler/soak/queue.sh
. "$(dirname "$0")/queue.sh"

MEMORY_NOISE=1536  # kB; 948 were seen in 10,000 jobs. Two hundred directives may not cost more than one

seed=${SEED:-$((RANDOM + 1))}
players=()

stop() {
  end_child "${players[@]}"
  scheduler_stop
  rm -rf "$soak_dir"
}

# Has every run of the filter tell the log its peak memory: GNU time runs it in its place.
measure_filter() {
  local filter=$scheduler_dir/bin/filter/commandtovelmo
  mv "$filter" "$filter.measured"
  printf '%s\n' '#!/bin/sh' \
    "exec time -f 'DEBUG: peak memory %M kB' '$filter.measured' \"\$@\"" >"$filter"
  chmod 0755 "$filter"
}

# How many processes the scheduler has started that are still there, dead or alive.
children() {
  cat /proc/[0-9]*/stat 2>/dev/null | sed 's/.*) //' | awk -v parent="$scheduler_pid" \
    '$2 == parent { ++n } END { print n + 0 }'
}

descriptors() {
  find "/proc/$scheduler_pid/fd" -mindepth 1 | wc -l
}

has_no_child() {
  (($(children) == 0))
}

has_no_more_descriptors() {
  (($(descriptors) <= before))
}

jobs_done() {
  cat "$soak_dir"/done.* 2>/dev/null | awk '{ n += $1 } END { print n + 0 }'
}

a_player_has_ended() {
  local pid
  for pid in "${players[@]}"; do
    kill -0 "$pid" 2>/dev/null || return 0
  done
  return 1
}

# A player that has ended this early has failed; the others need not wait for it.
every_queue_is_warm() {
  (($(jobs_done) == queues)) || a_player_has_ended
}

soak_dir=$(mktemp -d)
on_exit stop
echo "seed $seed"
scheduler_start "$FILTER"
scheduler_install backend "$ONEWAY"
measure_filter
SECONDS=0
for ((i = 0; i < queues; ++i)); do
  (play_queue "$i" $(((jobs + i) / queues))) &
  players+=($!)
done

# What the scheduler opens once for all is open after a job on every queue.
wait_until 600 every_queue_is_warm
expect_that 'the scheduler runs no program before the first count' wait_until 60 has_no_child
before=$(descriptors)
touch "$soak_dir/go"

expect_good_ends 'queue soak' "${players[@]}"
took=$SECONDS
players=()
expect 'the number of jobs that were played' "$(jobs_done)" "$jobs"

expect_that 'the scheduler has no child left' wait_until 60 has_no_child
expect_that "the scheduler has no more descriptors than the $before before" \
  wait_until 60 has_no_more_descriptors

peaks=$(sed -n 's/.*\] peak memory \([0-9]*\) kB$/\1/p' "$scheduler_log" | sort -n)
runs=$(wc -l <<<"$peaks")
lowest=$(head -n 1 <<<"$peaks")
highest=$(tail -n 1 <<<"$peaks")
expect "the number of the filter's runs" "$runs" "$jobs"
expect_that "the filter's memory is flat" test $((highest - lowest)) -le "$MEMORY_NOISE"

echo "$jobs jobs on $queues queues in $took s"
echo "the scheduler's descriptors: $before before, $(descriptors) after; its children: $(children)"
echo "the filter's peak memory: $lowest to $highest kB"
finish
