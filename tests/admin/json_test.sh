#!/bin/bash
# What velmoctl puts out as JSON is what its schemas and their description say, for each verdict.
set -eu
# shellcheck source=tests/admin/ring.sh
. "$(dirname "$0")/ring.sh"

STATUS=$root/docs/velmoctl-status.schema.json
LIST=$root/docs/velmoctl-list.schema.json
validate() { python3 "$root/tests/admin/validate.py" "$@"; }

# --- the description names what the schemas name
described() { sed -n "/^## velmoctl $1 /,/^## /s/^| \`\([a-z_]*\)\` .*/\1/p" "$root/docs/json.md"; }
expect 'status: the members described' "$(described status)" "$(validate --members "$STATUS")"
expect 'list: the members described' "$(described list)" "$(validate --members "$LIST")"

# --- a filter that reports what it is told
printer_start "$SIMULATOR"
mkdir "$work/reporting"
report() {
  { echo '#!/bin/sh' && printf 'echo "%s" >&2\n' "$@"; } >"$work/reporting/commandtovelmo"
  scheduler_install filter "$work/reporting/commandtovelmo"
  ctl ask photo
  expect_done "a report: $*"
  wait_until 30 no_jobs
}
no_jobs() { [[ $(queue_attribute photo queued-job-count) == 0 ]]; }

# expect_valid VERDICT QUEUE: what is put out for the queue fits the schema and has this verdict.
expect_valid() {
  ctl status --json "$2"
  expect "$1: status and errors" "$status $errors" '0 '
  expect_that "$1: fits the schema" validate "$STATUS" <<<"$said"
  expect "$1: the verdict" "$(sed -n 's/^    "verdict": "\(.*\)",$/\1/p' <<<"$said")" "$1"
  echo "$1" >>"$work/verdicts"
}

make_queue photo "$RASTER"
scheduler_client lpadmin -p photo -v "$(printer_uri)" 2>/dev/null
expect_valid not-attached photo
echo 'com.velmo-error0001 Paper jam.' >"$work/texts"
ctl attach --no-ask --reason-texts "$work/texts" photo
expect_valid never-asked photo
# shellcheck disable=SC1111 # the inches of a print size
report 'ATTR: marker-levels=50 marker-types=ink-ribbon marker-colors=#00FF00' \
  "ATTR: marker-message='Prints Remaining = 350 / 700' marker-names='Ribbon Type: 13x18(5x7″)'"
expect_valid ready photo
expect_part 'ready: prints' "$said" '"prints_left": 350,'
report 'ATTR: marker-levels=9'
expect_valid ribbon-low photo
report 'STATE: +com.velmo-error0001'
expect_valid printer-error photo
expect_part 'printer error: its text' "$said" '"text": "Paper jam.",'
report 'STATE: -com.velmo-error0001' 'STATE: +com.velmo-error0005' 'ATTR: marker-levels=0'
expect_valid ribbon-used-up photo
report 'STATE: -com.velmo-error0005' 'ATTR: marker-levels=-1'
expect_valid unknown-level photo
report 'STATE: +com.velmo-error0023' 'ATTR: marker-levels=-2' "ATTR: marker-message=''"
expect_valid does-not-answer photo
scheduler_client cupsdisable -r 'out for lunch' photo
scheduler_client cupsreject photo
expect_valid queue-stopped photo

# --- a scheduler that is not there: a program reads the same array, with nothing known in it
ctl -h "$scheduler_dir/nobody" status --json photo booth
expect_refused 'no scheduler' "velmoctl: the scheduler at $scheduler_dir/nobody cannot be reached"
expect_that 'no scheduler: fits the schema' validate "$STATUS" <<<"$said"
expect 'no scheduler: queues' "$(sed -n 's/^    "queue": "\(.*\)",$/\1/p' <<<"$said")" $'photo\nbooth'
sed -n 's/^    "verdict": "\(.*\)",$/\1/p' <<<"$said" | uniq >>"$work/verdicts"
ctl -h "$scheduler_dir/nobody" status --json
expect_that 'no scheduler, no queue: fits the schema' validate "$STATUS" <<<"$said"
expect_part 'no scheduler, no queue' "$said" '"queue": null,'

expect 'every verdict of the schema was seen' "$(LC_ALL=C sort "$work/verdicts")" \
  "$(validate --verdicts "$STATUS")"

# --- list
make_queue other "$RASTER"
make_queue fence '*% velmoctl begin'
ctl list --json
expect_that 'list: fits the schema' validate "$LIST" <<<"$said"
expect 'list: each way to stand' "$(sed -n 's/^    "attached": "\(.*\)",$/\1/p' <<<"$said" | LC_ALL=C sort)" \
  $'broken\nno\nyes'

ctl detach photo
ctl list
expect_part 'list: detached' "$said" 'photo: not attached, though it was: detached, or a new PPD file dropped what attach put in'

# --- no queues at all
scheduler_client lpadmin -x photo -x other -x fence
for name in other fence; do scheduler_client lpadmin -x "$name" 2>/dev/null || true; done
for command in status list; do
  ctl "$command" --json
  expect "$command without queues" "$status $said" '0 []'
done
expect_end
