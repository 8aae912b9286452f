# shellcheck shell=bash
# Lets the kernel run programs of another processor through the qemu-user of a Debian system in
# a folder. The kernel opens the emulator at once, so that it serves in every other folder too.
#
# Sourced by a script under `set -eu` that root runs:
#
#   . scripts/lib/emulation.sh
#   on_exit emulation_stop
#   emulation_start /tmp/root arm64

# shellcheck source-path=SCRIPTDIR source=fresh-system.sh
. "$(dirname "${BASH_SOURCE[0]}")/fresh-system.sh"

# emulation_start FOLDER ARCHITECTURE: the kernel prefers what is registered last, so one that
# stands there already neither disturbs nor is disturbed. A kernel since 6.7 forgets it with the
# last mount of binfmt_misc, and one before never: so a process keeps a mount of its own, and takes
# the registration back when this script closes its end of the pipe, or is ended.
emulation_start() {
  local processor line inside
  case $2 in
    arm64) processor=aarch64 ;;
    armhf) processor=arm ;;
    *) processor=$2 ;;
  esac
  line=$(cat "$1/usr/lib/binfmt.d/qemu-$processor.conf")
  system_enter "$1"
  # shellcheck disable=SC2016 # for the shell inside
  coproc EMULATION {
    exec "${inside[@]}" sh -euc 'trap "" HUP INT TERM
      mount -t binfmt_misc none /proc/sys/fs/binfmt_misc
      printf ":%s%s" "$1" "$2" >/proc/sys/fs/binfmt_misc/register
      echo registered
      cat
      echo -1 >"/proc/sys/fs/binfmt_misc/$1"' - \
      "commandtovelmo-$2-$$" "${line#:qemu-"$processor"}"
  }
  read -r -u "${EMULATION[0]}"
}

# Takes it back. Harmless when nothing was registered.
emulation_stop() {
  [[ ${EMULATION_PID:-} ]] || return 0
  local holder=$EMULATION_PID pipe=${EMULATION[1]}
  exec {pipe}>&-
  wait "$holder"
}
