#!/bin/bash
# velmoctl attach --no-ask and detach: what the scheduler makes of each shape of PPD file.
set -eu
# shellcheck source=tests/admin/ring.sh
. "$(dirname "$0")/ring.sh"

COMMAND_TYPE=application/vnd.cups-command
ctl list
expect 'a scheduler without queues' "$status $said" '0 The scheduler has no queues; lpadmin makes them.'
formats() { queue_attribute "$1" document-format-supported; }

# A job that reaches the filter is answered by nobody, but shows whose it is.
starts_our_filter() {
  scheduler_send_command "$1" ReportStatus
  wait_until 30 scheduler_filter_has_started commandtovelmo || { scheduler_job_log && return 1; }
  scheduler_client cancel "$1-$scheduler_job"
  wait_until 30 idle "$1"
}
idle() { [[ $(queue_attribute "$1" printer-state) == idle ]]; }

# expect_round_trip QUEUE: the queue is attached, starts the filter, and gets its file back.
expect_round_trip() {
  ctl attach --no-ask --replace "$1"
  expect "$1: attach: status" "$status" 0
  expect_part "$1: command jobs are taken" "$(formats "$1")" "$COMMAND_TYPE"
  expect "$1: the commands" "$(queue_attribute "$1" printer-commands)" ReportLevels,ReportStatus
  expect "$1: the device" "$(queue_attribute "$1" device-uri)" "$DEVICE"
  expect "$1: no filter is missing" "$(queue_attribute "$1" printer-state-reasons)" none
  expect_that "$1: a job starts the filter" starts_our_filter "$1"
  ctl detach "$1"
  expect_done "$1: detach"
  expect_unchanged "$1: detach" "$1"
}

make_queue postscript
expect_round_trip postscript
make_queue raster "$RASTER"
expect_round_trip raster
make_queue raster2 "$RASTER2" "$RASTER"
expect_round_trip raster2
make_queue rival "$RIVAL" "$RASTER" '*cupsCommands: "Clean"'
expect_round_trip rival
make_queue wildcard '*cupsFilter: "application/* 0 commandtops"'
expect_round_trip wildcard
make_queue dear '*cupsFilter: "application/* 1 commandtops"' '*cupsFilter: "application/vnd.cups-command 9 commandtops"'
expect_round_trip dear
make_queue multiline "$RASTER" '*cupsCommands: "Clean' 'PrintSelfTestPage"'
expect_round_trip multiline
make_queue latin1 "$RASTER" $'*% \xfcber: a lone " quote'
expect_round_trip latin1

# reshape FILTER...: the queue's file of before, sent through a filter.
reshape() {
  make_ppd "$work/unix" "$RASTER" "$RIVAL"
  "${@:2}" <"$work/unix" >"$work/given"
  scheduler_add_queue "$1" "$DEVICE" "$work/given"
  expect_round_trip "$1"
}
reshape windows sed 's/$/\r/'
reshape macintosh tr '\n' '\r'
reshape mixed sed '2~3s/$/\r/'
reshape unended head -c -1

# --- what the queue takes: print jobs as before, command jobs while it is attached
make_queue prints
expect_part 'a queue without filter lines prints PostScript' "$(formats prints)" application/postscript
ctl attach --no-ask prints
expect_part 'attached, it still does' "$(formats prints)" application/postscript
for lines in "$RASTER" "$RASTER2"; do
  make_queue commands "$lines"
  expect_no_part "command jobs with $lines: none before" "$(formats commands)" "$COMMAND_TYPE"
  ctl attach --no-ask commands
  expect_part "command jobs with $lines: attached" "$(formats commands)" "$COMMAND_TYPE"
  ctl detach commands
  expect_no_part "command jobs with $lines: none after" "$(formats commands)" "$COMMAND_TYPE"
done
make_queue ignored "$RASTER2" '*cupsFilter: "application/vnd.cups-command 0 commandtovelmo"' \
  '*cupsCommands: "ReportLevels ReportStatus"'
expect_no_part 'beside a cupsFilter2 line the scheduler reads no cupsFilter line' "$(formats ignored)" "$COMMAND_TYPE"
ctl attach --no-ask ignored
expect_part 'so the filter is named once more' "$said" 'ignored: attached'
expect_part 'then command jobs are taken' "$(formats ignored)" "$COMMAND_TYPE"

# --- faults that were there before, or that attaching ends, are no hindrance
make_queue faulty '*cupsFilter: "application/vnd.cups-raster 0 rastertonowhere"'
expect 'a print filter is missing' "$(queue_attribute faulty printer-state-reasons)" cups-missing-filter-warning
ctl attach --no-ask faulty
expect_done 'a print filter is missing'
make_queue gone "$RASTER" '*cupsFilter: "application/vnd.cups-command 0 commandtonowhere"'
ctl attach --no-ask --replace gone
expect_done 'a command filter that is missing is replaced'
expect 'then none is missing' "$(queue_attribute gone printer-state-reasons)" none

make_queue dry "$RASTER"
ctl attach --dry-run dry
expect_done 'a dry run'
expect_part 'a dry run shows the line' "$said" '+*cupsFilter: "application/vnd.cups-command 0 commandtovelmo"'

# --- refusals: the queue is as it was
make_queue taken "$RASTER" "$RIVAL" '*cupsCommands: "Clean"'
ctl attach --no-ask taken
expect_refused 'another command filter' '--replace puts ours in their place'
expect_part 'another command filter is shown' "$errors" "$RIVAL"
expect_part 'other commands are shown' "$errors" '*cupsCommands: "Clean"'
expect_unchanged 'another command filter' taken

make_queue open "$RASTER" '*cupsVendor: "never closed'
ctl attach --no-ask open
expect_refused 'an open quote' 'opens a quote that is never closed'
expect_unchanged 'an open quote' open

make_queue fence '*% velmoctl begin'
ctl attach --no-ask fence
expect_refused 'a damaged fence' 'a block of velmoctl begins that has no end'
ctl detach fence
expect_refused 'a damaged fence, detached' 'a block of velmoctl begins that has no end'
expect_unchanged 'a damaged fence' fence
ctl list
expect_part 'list names a damaged fence' "$said" 'fence: broken: line'

scheduler_client lpadmin -p raw -E -v "$DEVICE" 2>/dev/null
ctl attach --no-ask raw
expect_refused 'a queue without PPD file' 'raw: the queue has no PPD file'
scheduler_client lpadmin -p raster -c group 2>/dev/null
ctl attach --no-ask group
expect_refused 'a class' 'group: is a class; name the queues in it'
ctl attach --no-ask raster/draft
expect_refused 'an instance' 'is an instance of a queue'
sed 's/^[*]NickName: .*/*NickName: "Velmo - IPP Everywhere"/' "$work/given" >"$work/driverless"
scheduler_add_queue driverless "$DEVICE" "$work/driverless"
ctl attach --no-ask driverless
expect_refused 'a driverless queue' 'is a driverless queue'
ctl detach raster
expect_done 'detaching what is not attached'
expect_part 'detaching what is not attached' "$said" 'nothing to do'

# --- texts for the printer's errors
make_queue texts "$RASTER"
printf 'com.velmo-error0001 T\xc3\xbcr\n' >"$work/lang=de.txt"
ctl attach --no-ask --reason-texts "$work/lang=de.txt" texts
expect_done 'texts'
expect_that "a text is written in the file's encoding" grep -qxF \
  $'*cupsIPPReason com.velmo-error0001/T\xfcr: ""' "$(ppd texts)"
cp "$(ppd texts)" "$work/with-texts"
ctl attach --no-ask texts
expect_that 'texts stay when none are given' cmp "$work/with-texts" "$(ppd texts)"
printf 'com.velmo-error0002 A\ncom.velmo-error0099 B\n' >"$work/bad"
ctl attach --no-ask --reason-texts "$work/bad" texts
expect_refused 'a bad text' "velmoctl: $work/bad:2: the first word is none of the filter's keywords, such as com.velmo-error0001"
ctl attach --no-ask --reason-texts "$work/none" texts
expect_refused 'no such file of texts' "velmoctl: $work/none: cannot be read: No such file"
expect_that 'refused texts change nothing' cmp "$work/with-texts" "$(ppd texts)"
ctl attach --no-ask --reason-texts - texts <<<'com.velmo-error0003 From here'
expect_that 'texts come from standard input' grep -qF 'From here' "$(ppd texts)"
ctl attach --no-ask --no-reason-texts texts
expect 'texts are taken out' "$(grep -c cupsIPPReason "$(ppd texts)")" 0
ctl detach texts
expect_unchanged 'a queue with texts, detached' texts

# --- what the scheduler forgets with the old file
make_queue paused "$RASTER"
scheduler_client cupsreject paused
scheduler_client cupsdisable -r 'for a  test' paused
ctl attach --no-ask paused
expect_done 'a paused queue'
expect 'it stays stopped' "$(queue_attribute paused printer-state)" stopped
expect 'it stays paused' "$(queue_attribute paused printer-state-reasons)" paused
expect 'its message stays' "$(queue_attribute paused printer-state-message)" 'for a  test'
expect 'it goes on rejecting jobs' "$(queue_attribute paused printer-is-accepting-jobs)" false

make_queue errors "$RASTER"
scheduler_client lpadmin -p errors -o job-sheets-default=standard -o job-k-limit=7 -u allow:all 2>/dev/null
ctl attach --no-ask errors
expect 'banners stay' "$(queue_attribute errors job-sheets-default)" standard,none
expect 'limits stay' "$(queue_attribute errors job-k-limit)" 7

# --- advice
# advised DEVICE: the device that velmoctl advises, taken up.
advised() {
  scheduler_client lpadmin -p raster -v "$1" 2>/dev/null
  ctl detach raster
  ctl attach --no-ask raster
  sed -n "s/^  \(lpadmin -p 'raster' -v '.*'\)$/\1/p" <<<"$said" >"$work/advice"
  scheduler_client sh -e "$work/advice" 2>/dev/null
  queue_attribute raster device-uri
}
expect "a printer's device" "$(advised socket://127.0.0.1:9)" 'socket://127.0.0.1:9/?snmp=false'
expect 'a device that ends in a slash' "$(advised socket://127.0.0.1/)" 'socket://127.0.0.1/?snmp=false'
expect 'a device with options' "$(advised 'socket://127.0.0.1/?waiteof=false')" \
  'socket://127.0.0.1/?waiteof=false&snmp=false'
expect 'a device that has the option' "$(advised "$DEVICE")" "$DEVICE"
scheduler_client lpadmin -p raster -v file:///dev/null 2>/dev/null
ctl detach raster
ctl attach --no-ask raster
expect_part 'a device that gives no answers' "$errors" 'warning: the backend of a device file: passes no answers'

# --- a filter that the scheduler cannot start
make_queue missing "$RASTER"
ctl attach --no-ask missing
mv "$scheduler_dir/bin/filter/commandtovelmo" "$work/away"
scheduler_client lpadmin -p missing -o job-sheets-default=none 2>/dev/null
ctl attach --no-ask missing
expect_refused 'a missing filter' 'the PPD file is as wanted, but the scheduler does not start a filter'
ctl status --check missing
expect_part 'a missing filter is unknown to a monitor' "$said" 'VELMO UNKNOWN - missing: '
ctl detach missing
expect_done 'detaching a queue without its filter'
mv "$work/away" "$scheduler_dir/bin/filter/commandtovelmo"

# --- the command line
for arguments in '' frob 'attach' 'attach --frob raster' 'attach --reason-texts' 'list raster' \
  'attach --reason-texts x --no-reason-texts raster'; do
  # shellcheck disable=SC2086 # words
  ctl $arguments
  expect "a wrong command line: velmoctl $arguments" "$status" 2
  expect_part "it is said: velmoctl $arguments" "$errors" 'velmoctl: '
done
ctl frob
expect_part 'an unknown command is named' "$errors" 'velmoctl: frob is no command; see velmoctl --help'
ctl attach --frob raster
expect_part "a command's own help is named" "$errors" '--frob; see velmoctl attach --help'
for arguments in --help 'attach --help' 'detach --help' 'list --help' --version; do
  # shellcheck disable=SC2086
  ctl $arguments
  expect_done "velmoctl $arguments"
  expect_part "velmoctl $arguments" "$said" 'velmoctl'
done

# --- another scheduler
ctl list -h "$scheduler_dir/nobody"
expect_refused 'a scheduler that does not run' "the scheduler at $scheduler_dir/nobody cannot be reached"
status=0
CUPS_SERVER=$scheduler_dir/nobody "$VELMOCTL" -h "$scheduler_dir/clients/socket" list >"$work/said" || status=$?
expect '-h in front of the command names the scheduler' "$status" 0
expect_part 'its queues are shown' "$(<"$work/said")" 'raster: attached'
expect_end
