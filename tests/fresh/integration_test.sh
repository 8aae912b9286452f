#!/bin/bash
# The examples of docs/integration.md, as they stand there.
set -eu
# shellcheck source=tests/fresh/ring.sh
. "$(dirname "$0")/ring.sh"

# example NAME: the indented lines behind the mark of this name.
example() {
  MARK="<!-- example/$1 -->" awk '
    $0 == ENVIRON["MARK"] { inside = 1; next }
    inside && /^[^ ]/ { exit }
    inside { print substr($0, 5) }' "$root/docs/integration.md"
}

# Queues for photos: one with a driver, and one that hands them to the backend as they are.
# shellcheck disable=SC2016 # for the driver
printf '#!/bin/sh\ncat "$6"\n' >"$work/photodriver"
scheduler_install filter "$work/photodriver"
for queue in photo asis; do cp "$root/scripts/lib/scheduler/velmo-minimal.ppd" "$work/$queue.ppd"; done
echo '*cupsFilter: "image/jpeg 0 photodriver"' >>"$work/photo.ppd"
echo '*cupsFilter: "image/jpeg 0 -"' >>"$work/asis.ppd"
for queue in photo asis; do scheduler_add_queue "$queue" "$(printer_uri)" "$work/$queue.ppd"; done
PATH=${VELMOCTL%/*}:$PATH
cd "$work"
printf '\xff\xd8\xff\xe0 a picture' >photo.jpg
expect_shown() { expect_part "$1" "$shown" "$2"; }
show() { shown=$(scheduler_client "$@" 2>&1) || true; }

# --- what is not known
show python3 -c "$(example web-page.py)"
expect 'a web page: never asked' "$shown" 'never-asked'
show /usr/bin/python3 -c "$(example python-cups.py)"
expect_shown 'python3-cups: never asked' "KeyError: 'marker-levels'"

# --- with the print
expect_that 'the print job is taken' scheduler_client bash -euc "$(example with-the-print)"
wait_no_jobs photo
expect 'the level is right when the job has ended' \
  "$(scheduler_printer_attribute photo marker-message)" 'Prints Remaining = 349 / 700'

command=$(example with-the-print)
expect_that 'it is taken without a driver' scheduler_client bash -euc "${command/'-d photo '/-d asis }"
wait_no_jobs asis
expect 'without a driver no level is right' "$(scheduler_printer_attribute asis marker-levels)" -2
printer_tell remaining 349

# --- velmoctl status
show python3 -c "$(example web-page.py)"
expect 'a web page' "$shown" '349 of 700 prints, ready'
command=$(example monitor | sed -n 's/^ *command_line //p')
command=${command/'/usr/bin/velmoctl'/velmoctl}
# shellcheck disable=SC2016 # the monitoring system's own form
show bash -c "${command/'$ARG1$'/photo}"
expect_shown 'a monitor' 'VELMO OK - photo'
command=$(example dashboard | sed -n 's/^ *command: //p')
value=$(example dashboard | sed -n 's/^ *value_template: "{{ value_json\(.*\) }}"$/\1/p')
expect 'a dashboard: the value' "$value" '[0].level'
show bash -c "$command"
expect 'a dashboard' "$(python3 -c 'import json, sys; print(json.load(sys.stdin)[0]["level"])' <<<"$shown")" 49

# --- plain IPP
command=$(example ipptool)
show bash -c "${command/'ipp://localhost/'/"$(scheduler_uri '')"}"
expect_shown 'ipptool: the level' 'marker-levels (integer) = 49'
expect_shown 'ipptool: the clock' 'printer-up-time (integer) = '
show /usr/bin/python3 -c "$(example python-cups.py)"
expect_shown 'python3-cups' '49 Prints Remaining = 349 / 700 '

# --- npm's package, which speaks TCP only; scripts/test-npm fetches it
if [[ ${NODE_PATH-} ]]; then
  address=127.0.0.1:$(python3 -c 'import socket
with socket.create_server(("127.0.0.1", 0)) as free: print(free.getsockname()[1])')
  restart "Listen $address"
  code=$(example node-ipp.js)
  show node -e "${code/'localhost:631'/"$address"}"
  expect_shown 'npm: one value is the value itself' '49 Prints Remaining = 349 / 700 '
else
  echo "not run: npm's example; scripts/test-npm fetches what it needs"
fi
expect_end
