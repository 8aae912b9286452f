#!/bin/bash
# A scheduler that does not come up is reported with what it wrote, and leaves no file.
set -eu

TMPDIR=$(mktemp -d)
export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT
failures=0

# A cupsd that finds something wrong with its configuration.
mkdir "$TMPDIR/programs"
printf '#!/bin/sh\necho "a complaint of the scheduler"\nexit 1\n' >"$TMPDIR/programs/cupsd"
chmod +x "$TMPDIR/programs/cupsd"

status=0
written=$(PATH=$TMPDIR/programs:$PATH bash -eu -c '. "$1"; scheduler_start' - \
  "$(dirname "$0")/ring.sh" 2>&1) || status=$?
[[ $status == 1 ]] || { echo "FAILED: it ended with status $status"; failures=1; }
for text in 'a complaint of the scheduler' 'cupsd does not come up'; do
  [[ $written == *"$text"* ]] || { echo "FAILED: no \"$text\" in: $written"; failures=1; }
done
[[ $(ls -A "$TMPDIR") == programs ]] || { echo "FAILED: files are left: $(ls -A "$TMPDIR")"; failures=1; }
exit "$failures"
