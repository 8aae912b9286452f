#!/bin/bash
# Queues of every name that lpadmin makes are handled alike; a name is never a command, a
# pattern or an option.
set -eu
# shellcheck source=tests/admin/ring.sh
. "$(dirname "$0")/ring.sh"

# expect_service QUEUE COMMAND: a shell that is given the command starts the queue's service, whose
# name is that which systemd would give it.
expect_service() {
  local unit
  unit=$(bash -euc "systemctl() { printf '%s\n' \"\$*\"; }; $2")
  expect_part "$1: the command" "$unit" 'enable --now velmo-refresh@'
  ! command -v systemd-escape >/dev/null || expect "$1: the service" "${unit##* }" \
    "$(systemd-escape --template=velmo-refresh@.service -- "$1")"
}

cd "$work"
printf -v longest 'n%.0s' {1..127}
# shellcheck disable=SC2016 # names that a shell would expand
for name in photo 'z|id>pwned|e;' 'a,b' 'a*b' '100%' '^x$' '%s%n' '$(id>pwned)' '`id>pwned`' 'a&b' \
  '<x>' '[x]' '{a}' '!x' 'x=y' '@x' 'x+y' '++' '++a' '~' '-lead' '--help' list attach QUEUE 'fö→' '日本語' "$longest"; do
  make_queue "$name" "$RASTER"
  ctl attach --no-ask --dry-run -- "$name"
  expect_done "$name: a dry run"
  expect_unchanged "$name: a dry run" "$name"
  ctl attach --no-ask -- "$name"
  expect_done "$name: attach"
  expect_part "$name: attach says so" "$said" "$name: attached"
  ctl attach --no-ask -- "$name"
  expect_part "$name: attach again" "$said" "$name: is attached as wanted, nothing to do"
  ctl attach --no-ask --keep-fresh -- "$name"
  expect_service "$name" "$(tail -n 1 <<<"$said")"
  ctl list
  expect_part "$name: list" $'\n'"$said"$'\n' $'\n'"$name: attached"$'\n'
  ctl detach -- "$name"
  expect_done "$name: detach"
  expect_unchanged "$name: detach" "$name"
done
expect 'no name was run as a command' "$(find "$work" -name 'pwned*')" ''

make_queue Photo2 "$RASTER"
ctl attach --no-ask PHOTO2
expect_part 'names are the same in upper and lower case, as for the scheduler' "$said" 'Photo2: attached'

ctl attach --no-ask Photo2 nowhere photo
expect_refused 'of several queues one is not there' 'velmoctl: nowhere: there is no such queue'
expect_part 'the queue before it is done' "$said" 'Photo2: is attached'
expect_part 'the queue behind it is done' "$said" 'photo: attached'
expect_end
