# shellcheck shell=bash
# A simulated printer that a script starts, plays with and ends.
#
# Sourced by a script under `set -eu`, which says when the printer ends:
#
#   . scripts/lib/simulated-printer.sh
#   on_exit printer_stop
#   printer_start build/release/sim/velmo-printer-sim --total 700
#   scheduler_add_queue photo "$(printer_uri)"
#   printer_tell error 06 02 02
#
# The script may read printer_dir/heard: what the printer writes.

# shellcheck source-path=SCRIPTDIR source=on-exit.sh
. "$(dirname "${BASH_SOURCE[0]}")/on-exit.sh"
# shellcheck source-path=SCRIPTDIR source=end-child.sh
. "$(dirname "${BASH_SOURCE[0]}")/end-child.sh"
# shellcheck source-path=SCRIPTDIR source=wait-until.sh
. "$(dirname "${BASH_SOURCE[0]}")/wait-until.sh"

printer_dir=
printer_pid=

printer_fail() {
  echo "simulated printer: $*" >&2
  exit 1
}

# How many lines of what the printer wrote begin with this text.
printer_count() {
  BEGINNING=$1 awk 'index($0, ENVIRON["BEGINNING"]) == 1 { ++n } END { print n + 0 }' \
    "$printer_dir/heard"
}

# Whether there are more lines that begin with this text than there were.
printer_said() {
  (($(printer_count "$1") > $2))
}

# Whether there is nothing more to wait for: the printer listens, or it has died.
printer_is_settled() {
  printer_said 'listening on' 0 || ! kill -0 "$printer_pid" 2>/dev/null
}

# printer_start SIMULATOR [OPTION...]: starts the printer and returns when it listens.
printer_start() {
  printer_dir=$(mktemp -d "${TMPDIR:-/tmp}/printer.XXXXXX")
  mkfifo "$printer_dir/orders"
  : >"$printer_dir/heard"
  # Opened for both, the pipe neither blocks at its start nor ends between two orders.
  "$@" <>"$printer_dir/orders" >>"$printer_dir/heard" 2>&1 &
  printer_pid=$!
  if ! wait_until 10 printer_is_settled || ! printer_said 'listening on' 0; then
    printer_fail "$1 does not come up: $(cat "$printer_dir/heard")"
  fi
}

# Writes the device URI for a queue. Without SNMP: the backend asks a printer that speaks
# none for seconds before it answers the filter's first question.
printer_uri() {
  sed -n 's|^listening on \(.*\)|socket://\1/?snmp=false|p' "$printer_dir/heard"
}

# printer_tell ORDER...: changes the printer's state, and returns when it has changed.
printer_tell() {
  local before
  before=$(printer_count 'now: ')
  echo "$*" 1<>"$printer_dir/orders" # does not wait for a printer that has ended
  wait_until 10 printer_said 'now: ' "$before" && return
  kill -0 "$printer_pid" 2>/dev/null || printer_fail "it has ended before \"$*\""
  printer_fail "it did not take \"$*\": $(tail -n 5 "$printer_dir/heard")"
}

# Ends the printer. Harmless when none was started.
printer_stop() {
  [[ -z $printer_pid ]] || end_child "$printer_pid"
  printer_pid=
  [[ -z $printer_dir ]] || rm -rf "$printer_dir"
  printer_dir=
}
