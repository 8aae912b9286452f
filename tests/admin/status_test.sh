#!/bin/bash
# velmoctl status and ask in front of a simulated printer: every class of outcome.
set -eu
# shellcheck source=tests/admin/ring.sh
. "$(dirname "$0")/ring.sh"

printer_start "$SIMULATOR" --total 700 --remaining 350
make_ppd "$work/given" "$RASTER"
scheduler_add_queue photo "$(printer_uri)" "$work/given"
echo 'com.velmo-error0001 Paper jam. Open the cover.' >"$work/texts"

# jobs_of QUEUE: how many jobs wait or run there.
jobs_of() { queue_attribute "$1" queued-job-count; }
no_jobs() { [[ $(jobs_of "$1") == 0 ]]; }

ctl status
expect_part 'without an attached queue' "$said" 'No queue is attached'
ctl ask photo
expect_refused 'asking a queue that is not attached' 'velmoctl: photo: is not attached'
ctl status photo
expect_part 'a queue that is not attached' "$said" 'photo  not attached'

ctl attach --no-ask --reason-texts "$work/texts" photo
expect_part 'attach --no-ask' "$said" 'photo: attached'
ctl status photo
expect 'attach --no-ask asks nobody' "$said" $'photo  never asked\n  Asked    never'
ctl detach photo
ctl attach --reason-texts "$work/texts" photo
expect_done 'attach'
expect_part 'attach asks the printer' "$said" '50 %   350 of 700 prints, 13x18(5x7″)'

printer_tell error 06 02 02
ctl ask photo
expect_done 'ask'
expect_part 'an error has its text' "$said" \
  'Reason   Paper jam. Open the cover.  (com.velmo-error0001, code 06 02 02)'
ctl status --check photo
expect 'check: an error is critical' "$status" 2
expect_part 'check: it is said' "$said" \
  'VELMO CRITICAL - photo: printer error, ribbon 50 %, Paper jam. Open the cover. | ribbon=50%;10:;3:;0;100'
ctl status --json photo
expect 'json: the verdict' "$(sed -n 's/^ *"verdict": //p' <<<"$said")" '"printer-error",'
expect 'json: the level' "$(sed -n 's/^ *"level": //p' <<<"$said")" '50,'

printer_tell error 00 00 00
printer_tell remaining 35
ctl ask photo
expect_part 'ask once more shows the new level' "$said" '   35 of 700 prints'
ctl status --check
expect 'check: a low ribbon is a warning' "$status" 1
ctl status --check --warning 5
expect 'check: the limit counts' "$status" 0
printer_tell remaining 0
ctl ask photo
expect_part 'an empty ribbon' "$said" 'photo  ribbon used up'

# --- several queues, the worst first; a class stands for its members
scheduler_add_queue asleep "$DEVICE" "$work/given"
ctl attach --no-ask asleep
scheduler_client lpadmin -p asleep -c group 2>/dev/null
ctl status
expect 'the worst comes first' "$(grep -v '^ ' <<<"$said")" $'photo  ribbon used up\nasleep  never asked'
ctl status group
expect 'a class stands for its members' "$said" $'asleep  never asked\n  Asked    never'
ctl status photo nowhere
expect_refused 'a queue that is not there' 'velmoctl: nowhere: there is no such queue'
expect_part 'the others are shown' "$said" 'photo  ribbon used up'
ctl status --check photo nowhere asleep
expect 'check: critical goes before unknown' "$status" 2
ctl status --check nowhere asleep
expect 'check: unknown' "$status" 3
ctl -h "$scheduler_dir/nobody" status --check
expect 'check: no scheduler' "$status $said" '3 VELMO UNKNOWN - scheduler not reachable'
ctl status --check 'a|b=1;'
expect_part 'check: no bar in front of the figures' "$said" 'VELMO UNKNOWN - a/b=1;: there is no such queue'
for number in x 060 0x20 -5 101; do
  ctl status --check --warning "$number"
  expect "check: --warning $number is unknown to a monitor" "$status ${said:0:16}" '3 VELMO UNKNOWN - '
  ctl status --warning "$number"
  expect "--warning $number: a wrong command line" "$status" 2
done

# --- what the job is like: no banner, and nothing left behind
wait_until 30 no_jobs photo
scheduler_client lpadmin -p photo -o job-sheets-default=standard 2>/dev/null
ctl ask photo
expect_done 'ask with a default banner'
wait_until 30 no_jobs photo
expect 'no banner is printed' "$(grep -c 'banner page "standard"' "$scheduler_log")" 0

# --- declined
scheduler_client cupsdisable -r 'out for lunch' photo
ctl ask photo
expect_refused 'a stopped queue' 'velmoctl: photo: is stopped (out for lunch)'
ctl status --check photo
expect_part 'check: a stopped queue is critical' "$said" 'VELMO CRITICAL - photo: queue stopped'
scheduler_client cupsenable photo
scheduler_client cupsreject -r 'closed' photo
ctl ask photo
expect_refused 'a queue that rejects jobs' 'velmoctl: photo: rejects jobs (closed)'
scheduler_client cupsaccept photo
ctl ask group
expect_refused 'a class' 'velmoctl: group: is a class'
ctl ask nowhere
expect_refused 'a queue that is not there' 'there is no such queue'
scheduler_client lpadmin -p photo -u "deny:$(id -un)" 2>/dev/null
ctl ask photo
expect_refused 'a user that the queue refuses' 'velmoctl: photo: the scheduler does not let the user'
scheduler_client lpadmin -p photo -u allow:all 2>/dev/null

# --- a queue that is busy: a job that nobody takes
scheduler_client lp -d asleep -o raw "$work/given" >/dev/null
busy() { [[ $(queue_attribute asleep printer-state) == processing ]]; }
wait_until 30 busy
ctl ask --timeout 1 asleep
expect_refused 'a busy queue' 'velmoctl: asleep: was busy for 1 s'
expect 'its own job is gone' "$(jobs_of asleep)" 1
scheduler_client cancel -a asleep

printer_stop
expect_end
