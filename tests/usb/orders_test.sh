#!/bin/bash
# The orders of a person at the printer's USB plug: what each answers, and what is refused.
set -eu
# shellcheck source-path=SCRIPTDIR/../.. source=tests/harness/expect.sh
. "$(dirname "$0")/../harness/expect.sh"
# shellcheck source-path=SCRIPTDIR/../.. source=scripts/lib/on-exit.sh
. "$root/scripts/lib/on-exit.sh"

TMPDIR=$(mktemp -d)
export TMPDIR
on_exit "rm -rf '$TMPDIR'"

# What the simulator says to these lines; what it refuses goes to $TMPDIR/refused.
answers() { (printf '%s\n' "$@" quit | "$USB_SIMULATOR") 2>"$TMPDIR/errors" | grep '^now: '; }
refusals() { grep -v '^ERROR: uevent_sender_send: ' "$TMPDIR/errors" || true; } # of umockdev: nobody listens

taken=(unplug plug 'stall-in on' 'stall-in once' 'stall-in off' 'stall-out on' 'nak-out 0' 'nak-out 65535'
  'zero-length-packets on' 'zero-length-packets off' 'stale 0' 'stale 65535' 'silent on')
expect 'what is taken' "$(answers "${taken[@]}")" "$(printf 'now: %s\n' "${taken[@]}" quit)"
expect 'and refused' "$(refusals)" ''

expect 'orders for later' \
  "$(answers 'at wake-up unplug' 'at  status-query  stall-in once' 'at job-status-query stale 7')" \
  "now: at wake-up, unplug
now: at status query, stall-in once
now: at job status query, stale 7
now: quit"
expect 'and refused' "$(refusals)" ''

expect 'what is not taken' \
  "$(answers plug unplug unplug 'plug now' 'stall-in maybe' stall-out 'nak-out -1' 'nak-out 65536' \
    'zero-length-packets yes' 'stale x' at 'at midnight plug' 'at wake-up' 'at wake-up nonsense' \
    'at wake-up quit')" \
  $'now: unplug\nnow: quit'
AT='at: expected wake-up|status-query|job-status-query and an order for the plug'
expect 'and refused' "$(refusals)" "plug: it is so already
unplug: it is so already
plug: bad value \"now\": expected nothing
stall-in: bad value \"maybe\": expected on|once|off
stall-out: bad value \"\": expected on|once|off
nak-out: bad value \"-1\": expected 0..65535
nak-out: bad value \"65536\": expected 0..65535
zero-length-packets: bad value \"yes\": expected on|off
stale: bad value \"x\": expected 0..65535
$AT
$AT
$AT
$AT
$AT"
expect_end
