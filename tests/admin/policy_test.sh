#!/bin/bash
# velmoctl under the policy that CUPS is shipped with, as an ordinary user, as a member of the
# scheduler's group and as root, and over TCP.
set -eu
# shellcheck source=tests/admin/ring.sh
. "$(dirname "$0")/ring.sh"

if [[ $EUID -ne 0 ]]; then
  echo 'not run: only root can become the users that the policy tells apart'
  exit 77
fi

# --- the scheduler once more, under the shipped policy; the group games stands for lpadmin
stock=$(scheduler_cups_path datadir)/cupsd.conf.default
make_queue photo "$RASTER"
make_queue other "$RASTER"
# A port that was free just now.
printer_start "$SIMULATOR"
port=$(printer_uri) port=${port##*:} port=${port%%/*}
printer_stop
end_child "$scheduler_pid"
sed -n '/^<Location/,$p' "$stock" >"$work/policy"
sed -i '/^</,$d' "$scheduler_dir/etc/cupsd.conf"
cat - "$work/policy" >>"$scheduler_dir/etc/cupsd.conf" <<END
Listen $scheduler_dir/clients/socket
Listen 127.0.0.1:$port
END
echo 'SystemGroup root games' >>"$scheduler_dir/etc/cups-files.conf"
scheduler_run_cupsd
wait_until 30 scheduler_is_settled
expect_part 'the policy is the shipped one' "$(<"$scheduler_dir/etc/cupsd.conf")" \
  '<Limit CUPS-Add-Modify-Printer'

# Others pass through these folders to the socket and to the program.
chmod 0711 "$scheduler_dir/clients"
install -m 0755 "$VELMOCTL" "$scheduler_dir/velmoctl"
printer_start "$SIMULATOR" --total 700 --remaining 350

# as USER ARGUMENT...: velmoctl as this user, who is asked for no password.
as() {
  run_ctl setpriv --reuid "$1" --regid "$(id -g "$1")" --clear-groups \
    setsid --wait "$scheduler_dir/velmoctl" "${@:2}" </dev/null
}

as nobody attach --no-ask photo
expect_refused 'an ordinary user attaches' \
  'velmoctl: photo: the scheduler does not let the user nobody do this; run it as root or as a user whom its policy names; the PPD file is as it was'
expect 'an ordinary user attaches: one line' "$(wc -l <<<"$errors")" 1
expect_unchanged 'an ordinary user attaches' photo
as nobody attach --dry-run photo
expect_done 'an ordinary user looks what attaching would do'
expect_part 'an ordinary user looks what attaching would do' "$said" '+*% velmoctl begin'

as games attach --no-ask photo
expect_done 'a member of the group attaches'
as games attach photo
expect_part 'a member of the group attaches again' "$said" 'nothing to do'
as root attach --no-ask other
expect_done 'root attaches'

as nobody detach photo
expect_refused 'an ordinary user detaches' 'does not let the user nobody do this'
expect_that 'an ordinary user detaches: the block is there' grep -qF 'velmoctl begin' "$(ppd photo)"

scheduler_client lpadmin -p photo -v "$(printer_uri)" 2>/dev/null
for user in nobody games root; do
  as "$user" ask photo
  expect_done "$user asks"
  expect_part "$user asks" "$said" '350 of 700 prints'
  as "$user" status
  expect_done "$user looks"
  expect_part "$user looks" "$said" $'photo  ready\n'
  as "$user" list
  expect "$user lists" "$status $said" $'0 other: attached\nphoto: attached'
done

# --- over TCP, where root shows the scheduler's certificate
ctl -h "127.0.0.1:$port" status photo
expect_part 'over TCP: status' "$said" $'photo  ready\n'
ctl -h "127.0.0.1:$port" ask photo
expect_done 'over TCP: ask'
# CUPS 2.4.20 does not find a certificate outside of its own folder.
if scheduler_client setsid -w lpadmin -h "127.0.0.1:$port" -p other -D over-tcp 2>/dev/null </dev/null; then
  ctl -h "127.0.0.1:$port" detach photo
  expect_done 'over TCP: detach'
  expect_unchanged 'over TCP: detach' photo
  ctl -h "127.0.0.1:$port" attach --no-ask photo
  expect_done 'over TCP: attach'
else
  ctl -h "127.0.0.1:$port" detach photo
  expect_refused 'over TCP, as lpadmin is' 'does not let the user root do this'
fi
as nobody -h "127.0.0.1:$port" detach photo
expect_refused 'over TCP: an ordinary user' 'does not let the user nobody do this'

as games detach photo other
expect_done 'a member of the group detaches'
expect_unchanged 'a member of the group detaches' photo
expect_end
