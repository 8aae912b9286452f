#!/bin/bash
# The scheduler finds the printers at its USB, under the names that the PPD file of the package's
# test has for such a printer.
# shellcheck disable=SC2317 # the cases are run by their names
set -eu
# shellcheck source-path=SCRIPTDIR/../.. source=tests/usb/ring.sh
. "$(dirname "$0")/ring.sh"

# ppd_value KEYWORD: its value in that PPD file.
ppd_value() {
  KEYWORD="*$1: " awk 'index($0, ENVIRON["KEYWORD"]) == 1 { split($0, part, "\""); print part[2] }' \
    "$root/debian/tests/postscript.ppd"
}

# found FIELD: what that field says of the devices that the usb backend found.
found() {
  FIELD="$1 = " awk '{ sub(/^[ \t]*/, "") }
    /uri = / { is_usb = / usb:/ }
    is_usb && index($0, ENVIRON["FIELD"]) == 1 { print substr($0, length(ENVIRON["FIELD"]) + 1) }' <<<"$devices" |
    sort -u
}

case_two_printers() {
  usb_printer_start "$USB_SIMULATOR" first
  on_exit "end_child $printer_pid; printer_stop"
  usb_printer_start "$USB_SIMULATOR" second
  tell 'unplug, plug'
  devices=$(scheduler_client lpinfo -l -v --include-schemes usb)
  expect 'what is found' "$(grep -o 'usb://.*' <<<"$devices" | sort)" \
    $'usb://Velmo/Photo?serial=first\nusb://Velmo/Photo?serial=second'
  expect 'the device ID' "$(found device-id)" \
    'MFG:Velmo;MDL:Photo;CLS:PRINTER;DES:Velmo Photo;'
  expect 'make and model' "$(found make-and-model)" "$(ppd_value ModelName)"
  expect 'the maker' "$(ppd_value Manufacturer)" Velmo
}

run_cases two_printers
