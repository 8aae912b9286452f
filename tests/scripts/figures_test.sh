#!/bin/bash
# Figures get into a page between their marks and nowhere else, and every mark has a command that
# writes there.
# Usage: figures_test.sh
set -eu
# shellcheck source=tests/harness/expect.sh
. "$(dirname "$0")/../harness/expect.sh"
# shellcheck source=scripts/lib/on-exit.sh
. "$root/scripts/lib/on-exit.sh"
# shellcheck source=scripts/lib/figures.sh
. "$root/scripts/lib/figures.sh"

work=$(mktemp -d)
on_exit "rm -rf '$work'"
page=$work/page.md

# make_page TEXT: a page with this text between the marks "a.b".
make_page() {
  printf '%s\n' before '<!-- axb -->' '<!-- a.b -->' "$1" '<!-- end of a.b -->' after >"$page"
}
expect_page() {
  expect "$1" "$(<"$page")" "before
<!-- axb -->
<!-- a.b -->
$2
<!-- end of a.b -->
after"
}

make_page $'old\n& older'
printf 'new & \\1 %%s\n' | write_figures "$page" a.b
expect_page 'what comes on standard input takes the place of what was there' 'new & \1 %s'

make_page old
status=0
echo new | write_figures "$page" ab 2>"$work/complaint" || status=$?
expect 'a page without the marks: the status' "$status" 1
expect_part 'a page without the marks: the complaint' "$(<"$work/complaint")" "no marks of ab in $page"
expect_page 'a page without the marks stays as it is' old

printf '%s\n' '<!-- a.b -->' old after >"$page"
status=0
echo new | write_figures "$page" a.b 2>/dev/null || status=$?
expect 'a page without the second mark: the status' "$status" 1
expect 'a page without the second mark stays as it is' "$(tail -n 1 "$page")" after
expect 'nothing is left beside the page' "$(ls "$work")" $'complaint\npage.md'

TABLE='
| what | count |
|---|---|
| one | 1 |
| two | 2 |
'
make_page "$TABLE"
write_figure_row "$page" a.b '| one | 100 |'
write_figure_row "$page" a.b '| three | 3 |'
expect_page 'a row takes the place of the one with its first cell, or comes last' '
| what | count |
|---|---|
| one | 100 |
| two | 2 |
| three | 3 |
'

# An example's mark has a slash.
marks=$(sed -n 's/^<!-- \([^/]*\) -->$/\1/p' "$root"/docs/*.md | sort)
expect_part 'the marks in the documents are found' "$marks" 'end of measured'
written=$(grep -rhE 'write_figure(s|_row) ' "$root/scripts" | sed 's/$/ /')
while IFS= read -r mark; do
  expect_part "the mark \"$mark\" is closed" "$marks" "end of $mark"
  expect_part "a command writes at the mark \"$mark\"" "$written" " $mark "
done < <(grep -v '^end of ' <<<"$marks")
expect_end
