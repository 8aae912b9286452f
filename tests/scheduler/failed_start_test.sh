#!/bin/bash
# A scheduler that does not come up is reported with what it wrote, and leaves no file.
set -eu
# shellcheck source-path=SCRIPTDIR/../.. source=tests/harness/expect.sh
. "$(dirname "$0")/../harness/expect.sh"

TMPDIR=$(mktemp -d)
export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT

# A cupsd that finds something wrong with its configuration.
mkdir "$TMPDIR/programs"
printf '#!/bin/sh\necho "a complaint of the scheduler"\nexit 1\n' >"$TMPDIR/programs/cupsd"
chmod +x "$TMPDIR/programs/cupsd"

status=0
written=$(PATH=$TMPDIR/programs:$PATH bash -eu -c '. "$1"; scheduler_start' - \
  "$(dirname "$0")/ring.sh" 2>&1) || status=$?
expect 'the exit status' "$status" 1
expect_part 'what the scheduler wrote' "$written" 'a complaint of the scheduler'
expect_part 'what is wrong' "$written" 'cupsd does not come up'
expect 'the files that are left' "$(ls -A "$TMPDIR")" programs
expect_end
