#!/bin/bash
# The service that keeps a queue fresh: systemd reads it without a complaint, and finds little that
# it could do beyond its work.
# Usage: service_test.sh VELMOCTL
set -eu

# shellcheck source=tests/harness/expect.sh
. "$(dirname "$0")/../harness/expect.sh"
# shellcheck source=scripts/lib/on-exit.sh
. "$root/scripts/lib/on-exit.sh"

command -v systemd-analyze >/dev/null || {
  echo 'not run: there is no systemd-analyze'
  exit 77
}
work=$(mktemp -d)
on_exit "rm -rf '$work'"

unit=$work/velmo-refresh@photo.service
given=$(<"$root/debian/printer-driver-velmo-command.velmo-refresh@.service")
printf '%s\n' "${given/'/usr/bin/velmoctl'/"$1"}" >"$unit"
# Other units of this machine may be at fault.
verify() { systemd-analyze verify --man=no "$unit" 2>&1 | grep -F velmo-refresh || true; }
expect 'systemd complains of nothing' "$(verify)" ''

# In tenths, of which 100 are the worst.
expect_that 'there is little that it could do' systemd-analyze security --offline=true --threshold=15 "$unit"

# The program reads the unit's command line.
read -ra command <<<"$(sed -n 's/^ExecStart=:\(.*\) -- %I$/\1/p' "$unit")"
expect_part 'the command line is one of velmoctl' "$("${command[@]}" --help)" 'keep-fresh [OPTIONS] QUEUE...'

# A fault is found.
printf '%s\n' '[Service]' 'ExecStart=/nowhere' 'Ristart=no' >"$unit"
expect_part 'a fault is complained of' "$(verify)" Ristart
expect_that 'a unit without limits is' not systemd-analyze security --offline=true --threshold=15 "$unit"
expect_end
