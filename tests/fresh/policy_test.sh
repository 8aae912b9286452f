#!/bin/bash
# velmoctl keep-fresh under the policy that CUPS is shipped with, as a user without any rights.
set -eu
# shellcheck source=tests/fresh/ring.sh
. "$(dirname "$0")/ring.sh"

if [[ $EUID -ne 0 ]]; then
  echo 'not run: only root can become another user'
  exit 77
fi

add_queues photo
end_child "$scheduler_pid"
sed -i '/^</,$d' "$scheduler_dir/etc/cupsd.conf"
sed -n '/^<Location/,$p' "$(scheduler_cups_path datadir)/cupsd.conf.default" \
  >>"$scheduler_dir/etc/cupsd.conf"
expect_part 'the policy is the shipped one' "$(<"$scheduler_dir/etc/cupsd.conf")" '<Limit Cancel-Job'
echo "Listen $scheduler_dir/clients/socket" >>"$scheduler_dir/etc/cupsd.conf"
run_scheduler

# Others pass through these folders to the socket and to the program.
chmod 0711 "$scheduler_dir/clients"
install -m 0755 "$VELMOCTL" "$scheduler_dir/velmoctl"
VELMOCTL=$scheduler_dir/velmoctl
# shellcheck disable=SC2034 # for fresh_start
fresh_prefix=(setpriv --reuid nobody --regid nogroup --clear-groups)
fresh_start --settle 0.2 --idle 0 photo
wait_asked photo 1
wait_no_jobs photo
expect_that 'it asks as that user' grep -qF 'Queued on "photo" by "nobody".' "$scheduler_log"
expect_that 'it has a subscription' test "$(subscriptions)"
print photo
wait_asked photo 2
wait_message photo 'Prints Remaining = 349 / 700'
fresh_stop
expect 'its subscription is gone' "$(subscriptions)" ''
expect_end
