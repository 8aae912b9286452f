# shellcheck shell=bash
# A private scheduler: the real cupsd in folders of its own, so that a script can run jobs
# through CUPS while nothing of the system's printing is read, changed or even running.
#
# Sourced by a script under `set -eu`, as root or as an ordinary user. The script says when
# the scheduler ends, because it knows what else has to end:
#
#   . scripts/lib/private-scheduler.sh
#   on_exit scheduler_stop
#   scheduler_start build/release/commandtovelmo
#   scheduler_add_queue photo "socket://127.0.0.1:9100/?snmp=false"
#   scheduler_send_command photo ReportLevels ReportStatus
#   scheduler_wait_job
#   scheduler_printer_attribute photo marker-levels
#
# The script may read scheduler_dir (everything of the scheduler lies below it),
# scheduler_log (its error log) and scheduler_job (the number of the job sent last).

scheduler_files=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source-path=SCRIPTDIR source=on-exit.sh
. "$scheduler_files/on-exit.sh"
# shellcheck source-path=SCRIPTDIR source=end-child.sh
. "$scheduler_files/end-child.sh"
# shellcheck source-path=SCRIPTDIR source=wait-until.sh
. "$scheduler_files/wait-until.sh"
# shellcheck source-path=SCRIPTDIR source=scheduler-jobs.sh
. "$scheduler_files/scheduler-jobs.sh"

# cupsd and lpadmin stand where an ordinary user does not look.
PATH=$PATH:/usr/sbin

scheduler_dir=
scheduler_log=
scheduler_pid=
scheduler_job=

scheduler_fail() {
  echo "private scheduler: $*" >&2
  exit 1
}

# scheduler_cups_path serverbin|datadir: where the installed CUPS keeps it. Newer CUPS
# tells pkg-config, older CUPS only cups-config.
scheduler_cups_path() {
  pkg-config --variable="cups_$1" cups 2>/dev/null | grep . ||
    cups-config "--$1" 2>/dev/null | grep . ||
    scheduler_fail "neither pkg-config nor cups-config knows the $1 of CUPS; is libcups2-dev installed?"
}

# Makes the folder in which the scheduler looks for programs: links to all of the
# system's, so that jobs run through the real ones.
scheduler_make_programs() {
  local serverbin
  serverbin=$(scheduler_cups_path serverbin)
  mkdir "$scheduler_dir/bin" "$scheduler_dir/bin/backend" "$scheduler_dir/bin/filter"
  ln -s "$serverbin/daemon" "$scheduler_dir/bin/daemon"
  ln -s "$serverbin"/backend/* "$scheduler_dir/bin/backend"
  ln -s "$serverbin"/filter/* "$scheduler_dir/bin/filter"
}

# scheduler_install backend|filter PROGRAM: puts a program beside the system's, or in
# place of the one of its name. A copy, because the scheduler takes only programs that
# belong to its own user and that nobody else can write.
scheduler_install() {
  rm -f "$scheduler_dir/bin/$1/${2##*/}"
  install -m 0755 "$2" "$scheduler_dir/bin/$1/"
}

# Gives the scheduler the programs that make the pages of its web interface, before it is
# switched on. They are clients, which a scheduler run by root starts as the user lp.
scheduler_install_pages() {
  if [[ $(id -u) -eq 0 ]]; then
    chgrp lp "$scheduler_dir/clients"
    chmod 0710 "$scheduler_dir/clients"
  fi
  ln -s "$(scheduler_cups_path serverbin)/cgi-bin" "$scheduler_dir/bin/cgi-bin"
}

# Clients come in through a socket file in a folder that only this user can enter, so
# that nobody else on the machine can give orders to a scheduler that may run as root.
scheduler_configure() {
  local datadir
  datadir=$(scheduler_cups_path datadir)
  mkdir -m 0700 "$scheduler_dir/clients"
  mkdir "$scheduler_dir/cache" "$scheduler_dir/etc" "$scheduler_dir/spool" \
    "$scheduler_dir/spool/tmp" "$scheduler_dir/state"

  cat >"$scheduler_dir/etc/cups-files.conf" <<END
AccessLog $scheduler_dir/log/access_log
CacheDir $scheduler_dir/cache
DataDir $datadir
ErrorLog $scheduler_log
PageLog $scheduler_dir/log/page_log
Printcap $scheduler_dir/state/printcap
RequestRoot $scheduler_dir/spool
ServerBin $scheduler_dir/bin
ServerRoot $scheduler_dir/etc
StateDir $scheduler_dir/state
TempDir $scheduler_dir/spool/tmp
END
  cp "$scheduler_files/scheduler/cupsd.conf" "$scheduler_dir/etc/cupsd.conf"
  echo "Listen $scheduler_dir/clients/socket" >>"$scheduler_dir/etc/cupsd.conf"
}

# Starts cupsd. It finds no system bus, over which it would tell the desktop's colour
# manager of its queues.
scheduler_run_cupsd() {
  DBUS_SYSTEM_BUS_ADDRESS=unix:path=$scheduler_dir/no-bus \
    cupsd -f -c "$scheduler_dir/etc/cupsd.conf" -s "$scheduler_dir/etc/cups-files.conf" \
    </dev/null >"$scheduler_dir/log/output" 2>&1 &
  scheduler_pid=$!
}

# scheduler_client COMMAND [ARGUMENT...]: runs a client of the private scheduler, which
# sees neither the system's client configuration nor the user's.
scheduler_client() { (scheduler_exec "$@"); }

# scheduler_exec COMMAND [ARGUMENT...]: becomes such a client: behind it, `&` gives the number of
# the client itself, which can then be ended.
scheduler_exec() {
  exec env -u CUPS_ENCRYPTION -u CUPS_USER -u LPDEST -u PRINTER \
    CUPS_SERVER="$scheduler_dir/clients/socket" CUPS_SERVERROOT="$scheduler_dir/etc" \
    CUPS_STATEDIR="$scheduler_dir/state" HOME="$scheduler_dir/clients" LC_ALL=C.UTF-8 "$@"
}

# Whether there is nothing more to wait for: the scheduler answers, or it has died.
scheduler_is_settled() {
  scheduler_client lpstat -r 2>&1 | grep -q 'is running' || ! kill -0 "$scheduler_pid" 2>/dev/null
}

# scheduler_start [FILTER...]: starts the scheduler with these filters beside the
# system's, and returns when it answers.
scheduler_start() {
  local program caller_umask
  scheduler_dir=$(mktemp -d "${TMPDIR:-/tmp}/scheduler.XXXXXX")
  scheduler_log=$scheduler_dir/log/error_log
  ((${#scheduler_dir} <= 90)) ||
    scheduler_fail "$scheduler_dir is too long for a socket's path; set TMPDIR to a shorter one"

  caller_umask=$(umask)
  umask 022
  # As root, filters run as another user, who passes through this folder.
  chmod 0711 "$scheduler_dir"
  mkdir "$scheduler_dir/log"
  scheduler_make_programs
  for program; do scheduler_install filter "$program"; done
  scheduler_configure
  scheduler_run_cupsd
  umask "$caller_umask"

  if ! wait_until 30 scheduler_is_settled || ! kill -0 "$scheduler_pid" 2>/dev/null; then
    tail -n 20 "$scheduler_dir/log/output" "$scheduler_log" >&2 || true
    scheduler_fail "cupsd does not come up; above are the last lines of its output and its log"
  fi
}

# Ends the scheduler with the jobs that it runs, and removes its folders. Harmless when
# nothing was started.
scheduler_stop() {
  [[ -z $scheduler_pid ]] || end_child "$scheduler_pid"
  scheduler_pid=
  [[ -z $scheduler_dir ]] || rm -rf "$scheduler_dir"
  scheduler_dir=
}
