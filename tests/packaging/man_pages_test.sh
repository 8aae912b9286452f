#!/bin/bash
# The manual pages: without fault, and telling what the sources tell.
# Usage: man_pages_test.sh
set -eu

# shellcheck source=tests/harness/expect.sh
. "$(dirname "$0")/../harness/expect.sh"

page_of() { MANWIDTH=500 man -l "$root/packaging/$1."[18] 2>/dev/null | col -b | tr -s ' '; }

# What mandoc says but for which manuals are installed on this machine; the pages' last lines have
# our version where those of a system name the system.
faults() { mandoc -T lint "$1" 2>&1 | grep -vE 'outdated mandoc.db|referenced manual not found|system explicitly specified' || true; }

for page in commandtovelmo.8 velmoctl.1; do
  file=$root/packaging/$page
  expect "$page: mandoc finds no fault" "$(faults "$file")" ""
  expect "$page: man finds no fault" "$(man -l --warnings "$file" 2>&1 >/dev/null)" ""
done

expect "only manuals that there are, ours and those of cups, are referred to" \
  "$(sed -n 's/^\.Xr \([^ ]* [0-9]\).*/\1/p' "$root"/packaging/*.[18] | LC_ALL=C sort -u | paste -sd,)" \
  'backend 7,client.conf 5,commandtovelmo 8,cups-files.conf 5,cupsd.conf 5,filter 7,lpadmin 8,velmoctl 1'

# The tables of reasons, as lines such as "06 02 02 com.velmo-error0001".
reasons_of_source() {
  sed -n 's/.*{{0x\(..\), 0x\(..\), 0x\(..\)}, {"\(com[^"]*\)"}},.*/\1 \2 \3 \4/p' \
    "$root/report/printer_state_reasons.cpp"
}
reasons_of_page() {
  page_of commandtovelmo | awk '
    sub(/^ *com\.velmo-error/, "") { keyword = "com.velmo-error" $1; $1 = "" }
    /The code fe ed 01/ { exit }
    keyword { while (match($0, /[0-9a-f][0-9a-f] [0-9a-f][0-9a-f] [0-9a-f][0-9a-f]/)) {
      print substr($0, RSTART, RLENGTH), keyword
      $0 = substr($0, RSTART + RLENGTH) } }'
}
expect "every code is in the table of reasons, and no other" \
  "$(reasons_of_page | sort)" "$(reasons_of_source | sort)"
# Row 0 of the source's table is the good state.
expect "the table has as many codes as the source declares" "$(reasons_of_page | wc -l)" \
  $(($(sed -n 's/^extern .*PRINTER_STATE_REASONS\[\([0-9]*\)\];$/\1/p' \
    "$root/report/printer_state_reasons.h") - 1))

# The documents tell the range only. 0023 has a row of its own: no reply has it.
keywords=$(reasons_of_source | sed 's/.* //' | sort -u)
expect_part "the README tells the range of keywords" "$(cat "$root/README.md")" \
  "\`$(head -n 1 <<<"$keywords")\` to \`com.velmo-error0023\`"
expect_part "docs/troubleshooting.md tells the range of codes" \
  "$(cat "$root/docs/troubleshooting.md")" \
  "\`$(head -n 1 <<<"$keywords")\` to \`$(tail -n 1 <<<"$keywords" | tail -c 5)\`"

# What the filter writes, but for what depends on the printer, is named in its page.
page=$(page_of commandtovelmo)
for text in marker-colors marker-levels marker-message marker-names marker-types '#00FF00' ink-ribbon \
  'Prints Remaining = ' 'Ribbon Type: ' '#retry over' 'encountered undefined error number' \
  'nobidirectional I/O available!' 'fwrite() failed.' 'fflush() failed.' \
  'cupsBackChannelRead() failed.' 'CUPS_SC_CMD_DRAIN_OUTPUT=' 'Unable to open command file - ' \
  'job-id user title copies options [file]'; do
  expect_that "in the source: $text" grep -rqF -- "$text" "$root/driver" "$root/protocol" "$root/report"
  expect_part "in the page: $text" "$page" "$text"
done

expect_end
