#!/bin/bash
# velmo-attach-queue against a private scheduler: what the scheduler makes of each queue.
# Usage: attach_queue_test.sh FILTER
set -eu

filter=$1
# shellcheck source=tests/harness/expect.sh
. "$(dirname "$0")/../harness/expect.sh"
# shellcheck source=scripts/lib/private-scheduler.sh
. "$root/scripts/lib/private-scheduler.sh"
# shellcheck source=tests/packaging/trust.sh
. "$root/tests/packaging/trust.sh"

work=$(mktemp -d)
on_exit "scheduler_stop; rm -rf '$work'"
[[ $EUID -eq 0 ]] || trust_own_filters "$work/trusting"
scheduler_start "$filter"

DEVICE='socket://127.0.0.1:9/?snmp=false'
COMMAND_TYPE=application/vnd.cups-command
OURS1='*cupsFilter: "application/vnd.cups-command 0 commandtovelmo"'
OURS2='*cupsFilter2: "application/vnd.cups-command application/octet-stream 0 commandtovelmo"'
OUR_COMMANDS='*cupsCommands: "ReportLevels ReportStatus"'
RASTER1='*cupsFilter: "application/vnd.cups-raster 0 rastertolabel"'
RASTER2='*cupsFilter2: "application/vnd.cups-raster application/octet-stream 0 rastertolabel"'
PASS_POSTSCRIPT='*cupsFilter: "application/vnd.cups-postscript 0 -"'

# attach ARGUMENT...: runs the program; its messages are in $work/messages, its exit status
# in $status.
attach() {
  status=0
  scheduler_client env CUPS_SERVERBIN="$scheduler_dir/bin" \
    "$root/packaging/velmo-attach-queue" "$@" >"$work/messages" 2>&1 || status=$?
}

# expect_said RULE TEXT: the program said so. expect_refused RULE TEXT [QUEUE]: it said so and failed,
# and left the PPD file of the queue alone.
expect_said() { expect_part "$1" "$(<"$work/messages")" "$2"; }
expect_refused() {
  expect "$1: refused" "$status" 1
  expect_said "$1: said so" "$2"
  [[ -z ${3-} ]] || expect_that "$1: the PPD file is as it was" unchanged "$3"
}

# make_queue NAME [PPD-LINE...]: a queue whose PPD file ends with these lines.
make_queue() {
  queue=$1
  shift
  grep -v '^[*]cups\(Commands\|Filter\)' "$root/scripts/lib/scheduler/velmo-minimal.ppd" >"$work/$queue"
  for line; do echo "$line" >>"$work/$queue"; done
  scheduler_add_queue "$queue" "$DEVICE" "$work/$queue"
}

ppd() { echo "$scheduler_dir/etc/ppd/$1.ppd"; }
has_line() { grep -xF -- "$2" "$(ppd "$1")" || { cat "$(ppd "$1")" && return 1; }; }
unchanged() { cmp "$work/$1" "$(ppd "$1")"; }
formats() { scheduler_printer_attribute "$1" document-format-supported | tr , '\n'; }
takes() { formats "$1" | grep -xF "$2" || { formats "$1" && return 1; }; }
# Every queue takes some format: one that names none has not been asked.
refuses() { formats "$1" | grep / && not takes "$@"; }
commands() { scheduler_printer_attribute "$1" printer-commands; }

# A job that reaches the filter is answered by nobody, but shows whose it is.
starts_our_filter() {
  scheduler_send_command "$1" ReportStatus
  wait_until 30 scheduler_filter_has_started commandtovelmo || { scheduler_job_log && return 1; }
  scheduler_client cancel "$1-$scheduler_job"
}

# expect_attached QUEUE LINE: attaching makes the queue what every attached queue must be, as the
# scheduler sees it, and names the filter in this line.
expect_attached() {
  attach "$1"
  expect "$1: attaching succeeds" "$status" 0
  expect_that "$1: the filter is named" has_line "$1" "$2"
  expect_that "$1: the scheduler takes command jobs" takes "$1" "$COMMAND_TYPE"
  expect "$1: the scheduler offers our commands" "$(commands "$1")" ReportLevels,ReportStatus
  expect "$1: the device is kept" "$(scheduler_printer_attribute "$1" device-uri)" "$DEVICE"
  expect "$1: no filter is missing" "$(scheduler_printer_attribute "$1" printer-state-reasons)" none
  expect_that "$1: the PPD file as it was is kept" cmp "$work/$1" "$(ppd "$1").velmo-backup"
  expect "$1: the PPD file gained lines and lost none" "$(diff "$work/$1" "$(ppd "$1")" | grep '^<')" ""
  expect_that "$1: the job starts the filter" starts_our_filter "$1"
}

# --- one command filter per kind of PPD file
make_queue postscript
expect_that "a PPD file without filter lines: PostScript is taken" takes postscript application/postscript
expect_attached postscript "$OURS1"
expect_that "postscript: PostScript is still taken" takes postscript application/postscript
expect_that "postscript: it goes to the printer as it is" has_line postscript "$PASS_POSTSCRIPT"

make_queue raster "$RASTER1"
expect_that "a PPD file with a raster filter: no command jobs yet" refuses raster "$COMMAND_TYPE"
expect_attached raster "$OURS1"
expect_that "raster: no PostScript line comes in" not has_line raster "$PASS_POSTSCRIPT"

make_queue raster2 "$RASTER1" "$RASTER2"
expect_attached raster2 "$OURS2"
expect_that "raster2: it is not named in a cupsFilter line" not has_line raster2 "$OURS1"

make_queue ignored "$RASTER2" "$OURS1" "$OUR_COMMANDS"
expect_that "beside a cupsFilter2 line the scheduler looks at no cupsFilter line" \
  refuses ignored "$COMMAND_TYPE"

# --- once more, and away again
cp "$(ppd raster)" "$work/attached"
attach raster
expect_said "a second run does nothing" "nothing to do"
expect_that "a second run leaves the PPD file alone" cmp "$work/attached" "$(ppd raster)"
attach --remove raster
expect "removing succeeds" "$status" 0
expect_that "removing restores the PPD file byte by byte" unchanged raster
expect_that "removed, the queue takes no command jobs" refuses raster "$COMMAND_TYPE"
attach --remove raster
expect_said "removing what is not there does nothing" "nothing to do"

# --- looking only
make_queue dry "$RASTER1"
attach --dry-run dry
expect_said "a dry run shows the line" "+$OURS1"
expect_that "a dry run leaves the PPD file alone" unchanged dry
expect_that "a dry run keeps no copy" not test -e "$(ppd dry).velmo-backup"

# --- a command filter that is there already
OTHER='*cupsFilter: "application/vnd.cups-command 0 commandtops"'
OTHER_COMMANDS='*cupsCommands: "Clean"'
make_queue taken "$OTHER" "$OTHER_COMMANDS"
attach taken
expect_refused "another command filter, which is shown" "$OTHER" taken
attach --force taken
expect "--force: the scheduler offers our commands alone" "$(commands taken)" ReportLevels,ReportStatus
expect_that "--force: the other filter is out of force" not has_line taken "$OTHER"
expect_that "--force: the job starts the filter" starts_our_filter taken
attach --remove taken
expect_that "removing puts a replaced filter back" unchanged taken

make_queue taken2 "$RASTER2" '*cupsFilter2: "application/VND.cups-command application/octet-stream 0 commandtops"'
attach taken2
expect_refused "another command filter in a cupsFilter2 line, in any case" "VND.cups-command" taken2
make_queue beside "$RASTER2" "$OTHER"
attach beside
expect "a command filter in a line that the scheduler does not look at is no hindrance" "$status" 0
expect_that "it is left as it is" has_line beside "$OTHER"

make_queue listed "$RASTER1" '*cupsCommands: "none"'
attach listed
expect_refused "another list of commands" "has a command filter or a list of commands already" listed

make_queue broken "$RASTER1" '*cupsCommands: "Clean' 'PrintSelfTestPage"'
attach --force broken
expect_refused "a line that goes on in the next" "goes on in the next line" broken

make_queue own "$OURS1" "$OUR_COMMANDS"
attach own
expect_said "a PPD file that names the filter by itself: nothing to do" "nothing to do"
expect_that "a PPD file that names the filter by itself: left alone" unchanged own

make_queue faulty '*cupsFilter: "application/vnd.cups-raster 0 rastertonowhere"'
attach faulty
expect "a PPD file that was at fault before is no hindrance" "$status" 0
expect_that "it names the filter" has_line faulty "$OURS1"

make_queue gone '*cupsFilter: "application/vnd.cups-command 0 commandtonowhere"'
attach --force gone
expect "a command filter that is missing can be replaced" "$status" 0
expect "then no filter is missing" "$(scheduler_printer_attribute gone printer-state-reasons)" none

# --- line ends of other systems
make_queue windows "$RASTER1"
sed 's/$/\r/' "$work/windows" >"$work/crlf"
scheduler_add_queue windows "$DEVICE" "$work/crlf"
attach windows
expect "CR LF: the PPD file gained lines, ending in LF as the others now do" \
  "$(diff "$work/windows" "$(ppd windows)" | grep '^<')" ""
expect_that "CR LF: the job starts the filter" starts_our_filter windows
make_queue macintosh "$RASTER1"
tr '\n' '\r' <"$work/macintosh" >"$work/cr"
scheduler_add_queue macintosh "$DEVICE" "$work/cr"
attach macintosh
expect_that "CR: the raster filter is seen" not has_line macintosh "$PASS_POSTSCRIPT"
expect_that "CR: the job starts the filter" starts_our_filter macintosh

# --- texts for the printer's errors
make_queue texts "$RASTER1"
printf '# comment\n\ncom.velmo-error0001 First text\n\tcom.velmo-error0023   No answer \n' >"$work/texts-1"
attach --reason-texts "$work/texts-1" texts
expect_that "a text becomes a PPD line" has_line texts '*cupsIPPReason com.velmo-error0001/First text: ""'
expect_that "blanks around a text do not count" \
  has_line texts '*cupsIPPReason com.velmo-error0023/No answer: ""'
echo 'com.velmo-error0001 Other text' >"$work/texts-2"
attach --reason-texts "$work/texts-2" texts
expect "new texts take the place of all old ones" \
  "$(grep cupsIPPReason "$(ppd texts)")" '*cupsIPPReason com.velmo-error0001/Other text: ""'
cp "$(ppd texts)" "$work/attached"
for bad in 'com.velmo-error001 Text' 'paper-jam Text' 'com.velmo-error0001' 'com.velmo-error0001 a: b' \
  'com.velmo-error0001 a "b"' 'com.velmo-error0001 a/b' 'com.velmo-error0001 <41>' \
  "com.velmo-error0001 $(printf '%081d' 0)"; do
  echo "$bad" >"$work/bad"
  attach --reason-texts "$work/bad" texts
  expect_refused "a bad text, $bad" "$work/bad:1: "
done
printf 'com.velmo-error0001 A\ncom.velmo-error0001 B\n' >"$work/bad"
attach --reason-texts "$work/bad" texts
expect_said "two texts for one keyword: refused" "bad:2: a second text"
expect_that "refused texts leave the PPD file alone" cmp "$work/attached" "$(ppd texts)"
attach --reason-texts "$work/none" texts
expect_said "a file of texts that is not there: refused" "cannot read $work/none"

# --- the queue's own state
make_queue stopped "$RASTER1"
scheduler_client cupsdisable -r "for a test" stopped
scheduler_client cupsreject stopped
attach stopped
expect "a stopped queue stays stopped" "$(scheduler_printer_attribute stopped printer-state)" stopped
expect "a queue that rejects jobs goes on rejecting" \
  "$(scheduler_printer_attribute stopped printer-is-accepting-jobs)" false

# --- advice
# advised DEVICE: what the program advises a queue of this device to have, taken up.
advised() {
  scheduler_client lpadmin -p raster -v "$1" 2>/dev/null
  attach --remove raster
  attach raster
  sed -n "s/^velmo-attach-queue:   \(lpadmin -p raster -v '.*'\)$/\1/p" "$work/messages" >"$work/advice"
  scheduler_client sh -e "$work/advice" 2>/dev/null
  scheduler_printer_attribute raster device-uri
}
expect "a network printer's device" "$(advised socket://127.0.0.1:9)" 'socket://127.0.0.1:9/?snmp=false'
expect "a device that ends in a slash" "$(advised socket://127.0.0.1/)" 'socket://127.0.0.1/?snmp=false'
expect "a device with options" \
  "$(advised 'socket://127.0.0.1/?waiteof=false')" 'socket://127.0.0.1/?waiteof=false&snmp=false'
expect "a device that has the option" "$(advised "$DEVICE")" "$DEVICE"
attach dry
expect_no_part "no advice for a printer that is not asked" "$(<"$work/messages")" "snmp=false'"

# --- what cannot be attached
attach nowhere
expect_refused "a queue that is not there" "there is no queue nowhere"
scheduler_client lpadmin -p raw -E -v "$DEVICE" 2>/dev/null
attach raw
expect_refused "a queue without a PPD file" "raw has no PPD file"
# The program runs as root, and a name is never a command or a pattern.
for name in 'z|id>pwned|e;' 'a,b' 'a*b' '^x$' 'a;b' -lead; do
  scheduler_client lpadmin -p "$name" -E -v "$DEVICE" 2>/dev/null
  (cd "$work" && attach --dry-run "$name")
  expect_said "the name $name: refused" "$([[ $name == -* ]] && echo 'unknown option' || echo "a queue's name can have only letters")"
done
expect "no name was run as a command" "$(find "$work" -name 'pwned*')" ''
attach raster/draft
expect_said "an instance of a queue: refused" "is an instance"
# No queue, an unknown option, two queues, an option without its file.
for arguments in '' '--frobnicate raster' 'raster dry' --reason-texts; do
  # shellcheck disable=SC2086 # words
  attach $arguments
  expect "a usage error: $arguments" "$status" 2
done
attach --help
expect "--help: no error" "$status" 0

# --- failures on the way: nothing changes
# with_fake PROGRAM SCRIPT ARGUMENT...: attach, with a program that behaves differently.
with_fake() {
  mkdir -p "$work/bin"
  printf '#!/bin/sh\n%s\n' "$2" >"$work/bin/$1"
  chmod +x "$work/bin/$1"
  PATH=$work/bin:$PATH attach "${@:3}"
  rm "$work/bin/$1"
}

make_queue untouched "$RASTER1"
refused_for() {
  expect_refused "$1" "$2" untouched
  expect "$1: the queue is as it was" "$(scheduler_printer_attribute untouched printer-state-reasons)" none
  expect_that "$1: no command jobs are taken" refuses untouched "$COMMAND_TYPE"
}
with_fake lpadmin 'echo "lpadmin: Forbidden" >&2; exit 1' untouched
refused_for "a scheduler that takes no order" "lpadmin: Forbidden"

# shellcheck disable=SC2016 # for the script that is written
with_fake lpadmin 'PATH=${PATH#*:}; lpadmin "$@" && lpadmin -p untouched -v socket://127.0.0.1:10' untouched
refused_for "a device that changes on the way" "the device of untouched has changed"

# Only a scheduler that runs as root looks at whom its filters belong to.
if [[ $EUID -eq 0 ]]; then
  chmod 0777 "$scheduler_dir/bin/filter/commandtovelmo"
  attach untouched
  refused_for "a filter that others can write" "Bad permissions on cupsFilter file"
  with_fake cupstestppd 'exit 0' untouched
  refused_for "a filter that the scheduler does not trust" "cups-insecure-filter-warning"
fi

rm "$scheduler_dir/bin/filter/commandtovelmo"
if [[ $EUID -eq 0 ]]; then
  attach untouched
  refused_for "a filter that is not installed" "Missing cupsFilter file"
fi
with_fake cupstestppd 'exit 0' untouched
refused_for "a filter that the scheduler does not find" "cups-missing-filter-warning"
scheduler_install filter "$filter"

with_fake lpstat 'echo print.example.org:631' untouched
refused_for "a scheduler on another machine" "the scheduler in use is print.example.org:631"
scheduler_elsewhere=$scheduler_dir/clients/nobody
status=0
CUPS_SERVER=$scheduler_elsewhere "$root/packaging/velmo-attach-queue" untouched >"$work/messages" 2>&1 || status=$?
refused_for "a scheduler that is not running" "does not run"

expect_end
