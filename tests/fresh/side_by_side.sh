#!/bin/bash
# Runs these tests of the ring at the same time: most of what they do is wait. The output of
# those that fail is shown; of one that never ends, its name is the last line.
# Usage: side_by_side.sh TEST...
set -eu
folder=$(dirname "$0")
# shellcheck source=scripts/lib/on-exit.sh
. "$folder/../../scripts/lib/on-exit.sh"
# shellcheck source=scripts/lib/end-child.sh
. "$folder/../../scripts/lib/end-child.sh"

work=$(mktemp -d)
declare -A children=()
on_exit "end_child \${children[@]}; rm -rf '$work'"
for test; do
  bash "$folder/${test}_test.sh" >"$work/$test" 2>&1 &
  children[$test]=$!
done
status=0
for test; do
  echo "waits for $test"
  wait "${children[$test]}" && continue
  status=1
  printf '== %s\n' "$test"
  cat "$work/$test"
done
exit "$status"
