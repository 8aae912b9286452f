#!/bin/bash
# What people's own tools show of an attached queue: CUPS's command line, python3-cups as
# desktop tools use it, and CUPS's web interface.
# Usage: clients_test.sh FILTER SIMULATOR
set -eu

filter=$1
simulator=$2
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
# shellcheck source=scripts/lib/private-scheduler.sh
. "$root/scripts/lib/private-scheduler.sh"
# shellcheck source=scripts/lib/simulated-printer.sh
. "$root/scripts/lib/simulated-printer.sh"
# shellcheck source=tests/packaging/check.sh
. "$here/check.sh"

NAME=$'Ribbon Type: 13x18(5x7\xe2\x80\xb3)'

work=$(mktemp -d)
on_exit "scheduler_stop; printer_stop; rm -rf '$work'"
[[ $EUID -eq 0 ]] || trust_own_filters "$work/trusting"
printer_start "$simulator" --total 700 --remaining 350
scheduler_start "$filter"
scheduler_add_queue photo "$(printer_uri)" "$root/debian/tests/postscript.ppd"
echo 'com.velmo-error0001 Text of this test' >"$work/texts"
scheduler_client env CUPS_SERVERBIN="$scheduler_dir/bin" \
  "$root/packaging/velmo-attach-queue" --reason-texts "$work/texts" photo

# show COMMAND...: what a client shows, for the checks that follow.
show() { scheduler_client "$@" >"$work/shown" 2>&1; }
shows() { has_text "$work/shown" "$1"; }
hides() { lacks_text "$work/shown" "$1"; }

printer_tell error 06 02 02
scheduler_send_command photo ReportLevels
scheduler_wait_job

# The test that CUPS brings along to see whether a printer's attributes make sense.
socket=$(printf %s "$scheduler_dir/clients/socket" | sed 's,/,%2F,g')
check "ipptool finds no fault with the attributes" \
  show ipptool -tv "ipp://$socket/printers/photo" get-printer-attributes.test
check "ipptool shows the level" shows 'marker-levels (integer) = 50'
check "ipptool shows the name" shows "marker-names (nameWithoutLanguage) = $NAME"
check "ipptool shows the type" shows 'marker-types (keyword) = ink-ribbon'
check "ipptool shows the error" shows 'printer-state-reasons (keyword) = com.velmo-error0001'

show lpstat -l -p photo
check "lpstat shows the error" shows 'Alerts: com.velmo-error0001'
check "lpstat shows no level" hides 50

show lpoptions -p photo
check "lpoptions shows the level" shows ' marker-levels=50 '
check "lpoptions shows the message" shows " marker-message='Prints Remaining = 350 / 700' "
check "lpoptions shows the name" shows " marker-names='$NAME' "
check "lpoptions shows the error" shows ' printer-state-reasons=com.velmo-error0001 '

# A desktop tool reads the attributes, and sends a command job to have them renewed.
printer_tell remaining 70
printf '#CUPS-COMMAND\nReportLevels\n' >"$work/commands"
show /usr/bin/python3 "$here/desktop_client.py" photo "$work/commands"
check "python3-cups reads the level before" shows 'levels [50]'
check "python3-cups reads the name" shows "names ['$NAME']"
check "python3-cups reads the colour and the type" shows "colors ['#00FF00'] types ['ink-ribbon']"
check "python3-cups reads the error" shows "reasons ['com.velmo-error0001']"
check "python3-cups reads the PPD file's text for the error" shows 'text Text of this test'
check "python3-cups is offered the command" shows "commands ['ReportLevels', 'ReportStatus']"
check "python3-cups has the level renewed by a command job" shows 'renewed levels [10]'

scheduler_install_pages
scheduler_client cupsctl WebInterface=Yes
page() { curl --silent --fail --unix-socket "$scheduler_dir/clients/socket" "http://localhost$1" >"$work/shown"; }
check "the web interface has a page for the queue" wait_until 30 page /printers/photo
check "the web interface shows the queue's state" shows '(Idle,'
check "the web interface shows no level" hides 'Ribbon Type'
check_end
