#!/bin/bash
# velmoctl keep-fresh: what is a print, at a scheduler that forgets a job with its end.
set -eu
# shellcheck source=tests/fresh/ring.sh
. "$(dirname "$0")/ring.sh"

restart 'PreserveJobHistory No'
add_queues cancelled command print
# The scheduler takes a name in any case, and tells it as it was given first.
fresh_start --settle 0.3 --idle 0 cancelled command PRINT
wait_asked command 1
wait_asked PRINT 1
for queue in command print; do wait_no_jobs "$queue"; done

# The level is a second newer than the job's begin: the clock has whole seconds.
printer_tell delay 1100
command_job command
wait_no_jobs command
printer_tell delay 0
print print
wait_asked PRINT 2
wait_message print 'Prints Remaining = 349 / 700'
expect 'a job that brought levels is no print' "$(count_asks command)" 1

# --- a print that is cancelled at work may have come out
wait_no_jobs cancelled
scheduler_client lpadmin -p cancelled -v "$NOBODY" 2>/dev/null
print cancelled
wait_processing cancelled
scheduler_client cancel -a cancelled
scheduler_client lpadmin -p cancelled -v "$(printer_uri)" 2>/dev/null
wait_asked cancelled 2
fresh_stop
expect_end
