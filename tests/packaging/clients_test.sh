#!/bin/bash
# What people's own tools show of an attached queue: CUPS's command line, python3-cups as
# desktop tools use it, and CUPS's web interface.
# Usage: clients_test.sh FILTER SIMULATOR VELMOCTL
set -eu

filter=$1
simulator=$2
velmoctl=$3
# shellcheck source=tests/harness/expect.sh
. "$(dirname "$0")/../harness/expect.sh"
# shellcheck source=scripts/lib/private-scheduler.sh
. "$root/scripts/lib/private-scheduler.sh"
# shellcheck source=scripts/lib/simulated-printer.sh
. "$root/scripts/lib/simulated-printer.sh"

NAME=$'Ribbon Type: 13x18(5x7\xe2\x80\xb3)'

work=$(mktemp -d)
on_exit "scheduler_stop; printer_stop; rm -rf '$work'"
printer_start "$simulator" --total 700 --remaining 350
scheduler_start "$filter"
scheduler_add_queue photo "$(printer_uri)" "$root/debian/tests/postscript.ppd"
echo 'com.velmo-error0001 Text of this test' >"$work/texts"
scheduler_client "$velmoctl" attach --no-ask --reason-texts "$work/texts" photo

# show COMMAND...: keeps what a client shows, for what is expected next.
show() { scheduler_client "$@" >"$work/shown" 2>&1; }
expect_shown() { expect_part "$1" "$(<"$work/shown")" "$2"; }

# What lpstat shows of the queue, but for the time of day at the end of its first line.
shown_by_lpstat() { scheduler_client lpstat -l -p photo | sed '1s/ since .*//'; }

printer_tell error 06 02 02
scheduler_send_command photo ReportLevels
scheduler_wait_job

# The test that CUPS brings along to see whether a printer's attributes make sense.
expect_that "ipptool finds no fault with the attributes" \
  show ipptool -tv "$(scheduler_uri printers/photo)" get-printer-attributes.test
expect_shown "ipptool shows the level" 'marker-levels (integer) = 50'
expect_shown "ipptool shows the name" "marker-names (nameWithoutLanguage) = $NAME"
expect_shown "ipptool shows the type" 'marker-types (keyword) = ink-ribbon'
expect_shown "ipptool shows the error" 'printer-state-reasons (keyword) = com.velmo-error0001'

lpstat=$(shown_by_lpstat)
expect_part "lpstat shows the error" "$lpstat" 'Alerts: com.velmo-error0001'

show lpoptions -p photo
if [[ $(cups-config --api-version) == 2.4 ]]; then # Newer lpoptions leaves out what is used up.
  expect_shown "lpoptions shows the level" ' marker-levels=50 '
  expect_shown "lpoptions shows the message" " marker-message='Prints Remaining = 350 / 700' "
  expect_shown "lpoptions shows the name" " marker-names='$NAME' "
fi
expect_shown "lpoptions shows the error" ' printer-state-reasons=com.velmo-error0001 '

# A desktop tool reads the attributes, and sends a command job to have them renewed.
printer_tell remaining 70
printf '#CUPS-COMMAND\nReportLevels\n' >"$work/commands"
show /usr/bin/python3 "$root/tests/packaging/desktop_client.py" photo "$work/commands"
expect_shown "python3-cups reads the level before" 'levels [50]'
expect_shown "python3-cups reads the name" "names ['$NAME']"
expect_shown "python3-cups reads the colour and the type" "colors ['#00FF00'] types ['ink-ribbon']"
expect_shown "python3-cups reads the error" "reasons ['com.velmo-error0001']"
expect_shown "python3-cups reads the PPD file's text for the error" 'text Text of this test'
expect_shown "python3-cups is offered the command" "commands ['ReportLevels', 'ReportStatus']"
expect_shown "python3-cups has the level renewed by a command job" 'renewed levels [10]'
expect "lpstat shows no level: the same at 10 % as at 50 %" "$(shown_by_lpstat)" "$lpstat"

scheduler_install_pages
scheduler_client cupsctl WebInterface=Yes
page() { curl --silent --fail --unix-socket "$scheduler_dir/clients/socket" "http://localhost$1" >"$work/shown"; }
expect_that "the web interface has a page for the queue" wait_until 30 page /printers/photo
expect_shown "the web interface shows the queue's state" '(Idle,'
expect_no_part "the web interface shows no level" "$(<"$work/shown")" 'Ribbon Type'
expect_end
