#!/bin/bash
# Every list of commands that a queue may offer names the directives that the filter knows, and
# no other.
# Usage: cups_commands_test.sh
set -eu
# shellcheck source=tests/harness/expect.sh
. "$(dirname "$0")/../harness/expect.sh"
cd "$root"

known=$(sed -n 's/.*_cups_strcasecmp(directive, "\([A-Za-z]*\)") == 0.*/\1/p' driver/report_commands.cpp | sort)
expect_part 'the directives that the filter knows' "$known" ReportStatus

# Lists in the lines of PPD files, wherever one is written or quoted. The tests make queues with
# other lists on purpose.
lists=$(grep -rnIo --exclude-dir={.git,build,tests} 'cupsCommands: \\\?"[^"\\]*' .)
for file in README.md packaging/command-filter.ppd packaging/velmoctl.1 \
  scripts/lib/scheduler/velmo-minimal.ppd; do
  expect_part "the list in $file is found" "$lists" "./$file:"
done
while IFS= read -r list; do
  expect "${list%:cupsCommands*}" "$(tr ' ' '\n' <<<"${list##*\"}" | sort)" "$known"
done <<<"$lists"

expect "the commands that velmoctl attaches" "$(tr '\n' ' ' <admin/command_filter.h |
  sed -n 's/.* OUR_COMMANDS{\([^}]*\)}.*/\1/p' | tr -d '" ' | tr , '\n' | sort)" "$known"

page=$(sed -n '/^\.Bl .*Report/,/^\.El/s/^\.It Cm //p' packaging/commandtovelmo.8 | sort)
expect 'the directives in the manual page of the filter' "$page" "$known"
expect_end
