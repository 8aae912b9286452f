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

emulation_folder=
emulation_name=

# emulation_start FOLDER ARCHITECTURE: the kernel prefers what is registered last, so one that
# stands there already neither disturbs nor is disturbed.
emulation_start() {
  local processor line inside
  case $2 in
    arm64) processor=aarch64 ;;
    armhf) processor=arm ;;
    *) processor=$2 ;;
  esac
  line=$(cat "$1/usr/lib/binfmt.d/qemu-$processor.conf")
  emulation_folder=$1
  emulation_name=commandtovelmo-$2-$$
  system_enter "$1"
  # shellcheck disable=SC2016 # for the shell inside
  "${inside[@]}" sh -euc 'mount -t binfmt_misc none /proc/sys/fs/binfmt_misc
    printf ":%s%s" "$1" "$2" >/proc/sys/fs/binfmt_misc/register' - \
    "$emulation_name" "${line#:qemu-"$processor"}"
}

# Takes it back. Harmless when nothing was registered.
emulation_stop() {
  [[ $emulation_name ]] || return 0
  local inside
  system_enter "$emulation_folder"
  # shellcheck disable=SC2016 # for the shell inside
  "${inside[@]}" sh -euc 'mount -t binfmt_misc none /proc/sys/fs/binfmt_misc
    ! test -e "/proc/sys/fs/binfmt_misc/$1" || echo -1 >"/proc/sys/fs/binfmt_misc/$1"' - \
    "$emulation_name"
  emulation_name=
}
