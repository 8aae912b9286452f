# shellcheck shell=bash
# Waiting for a condition instead of for a time.

# wait_until SECONDS COMMAND [ARGUMENT...]: runs the command again and again until it
# succeeds; fails when it has not within these seconds.
wait_until() {
  local deadline=$((SECONDS + $1 + 1))
  shift
  until "$@"; do
    ((SECONDS < deadline)) || return 1
    sleep 0.05
  done
}
