# shellcheck shell=bash
# Cleaning up when a script ends, however it ends.

# on_exit COMMANDS: runs them when the script ends, also when a signal ends it. From then on
# further signals are ignored: a second Ctrl-C must not cut the cleaning up short.
on_exit() {
  local signal deaf="trap '' HUP INT PIPE TERM"
  # shellcheck disable=SC2064 # the commands are known now
  trap "$deaf; $1" EXIT
  for signal in HUP INT PIPE TERM; do
    # shellcheck disable=SC2064
    trap "$deaf; exit $((128 + $(kill -l "$signal")))" "$signal"
  done
}
