# shellcheck shell=bash disable=SC2154 # what is sourced before it sets what is not set here
# Simulated printers at the USB of a private scheduler, behind the system's own usb backend.
#
# Sourced behind private-scheduler.sh and simulated-printer.sh by a script under `set -eu`:
#
#   scheduler_start build/release/commandtovelmo
#   usb_start
#   usb_printer_start build/release/sim/usb/velmo-usb-printer-sim V0001 --total 700
#   scheduler_add_queue photo "$(usb_uri V0001)"
#   printer_tell unplug

# Has the scheduler run the usb backend where it sees simulated printers. The machines of these are
# open to every user, and lie in a folder that lets in nobody but the backend's.
usb_start() {
  local backend
  backend=$(scheduler_cups_path serverbin)/backend/usb
  mkdir -m 0700 "$scheduler_dir/usb"
  mkdir -m 0755 "$scheduler_dir/usb/printers" "$scheduler_dir/usb/quirks"
  if [[ $(id -u) -eq 0 ]]; then
    chgrp lp "$scheduler_dir/usb"
    chmod 0710 "$scheduler_dir/usb"
  fi
  install -m 0755 "$backend" "$scheduler_dir/usb/backend"
  scheduler_install backend "$scheduler_files/scheduler/usb"
}

# Whether there is nothing more to wait for: it is plugged in, or the printer has died.
usb_is_settled() {
  printer_said 'plugged in at ' 0 || ! kill -0 "$printer_pid" 2>/dev/null
}

# usb_printer_start SIMULATOR SERIAL [OPTION...]: starts a printer and returns when it is plugged in.
usb_printer_start() {
  local TMPDIR=$scheduler_dir/usb serial=$2
  export TMPDIR
  printer_start "$1" --serial "$serial" "${@:3}"
  if ! wait_until 30 usb_is_settled || ! printer_said 'plugged in at ' 0; then
    printer_fail "$1 is not plugged in: $(cat "$printer_dir/heard")"
  fi
  ln -s "$(sed -n 's/^plugged in at //p' "$printer_dir/heard")" "$scheduler_dir/usb/printers/$serial"
}

# usb_quirk SERIAL QUIRK: from now on the backend treats the printer so.
usb_quirk() {
  mkdir -p "$scheduler_dir/usb/quirks/$1/usb"
  echo "0x1209 0x0001 $2" >"$scheduler_dir/usb/quirks/$1/usb/simulated.usb-quirks"
}

# Writes the device URI for a queue.
usb_uri() {
  echo "usb://Velmo/Photo?serial=$1"
}
