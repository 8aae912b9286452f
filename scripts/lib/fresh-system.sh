# shellcheck shell=bash
# A fresh Debian system in a folder, for trying what a machine that never saw this tree does.
#
# Sourced by a script under `set -eu` that root runs:
#
#   . scripts/lib/fresh-system.sh
#   system_make /tmp/root trixie amd64,arm64
#   system_enter /tmp/root
#   "${inside[@]}" apt-get update

# This machine's own release of Debian.
system_release() {
  # shellcheck disable=SC1091 # the machine's own
  (. /etc/os-release && echo "$VERSION_CODENAME")
}

# Where this machine's apt takes its own release from.
system_mirror() {
  local release
  release=$(system_release)
  # shellcheck disable=SC2016 # apt-get's own variable
  apt-get indextargets --format '$(REPO_URI)' "Codename: $release" 'Identifier: Packages' |
    sed -n 1p | grep . || {
    echo "fresh system: apt knows no mirror of $release" >&2
    return 1
  }
}

# system_make FOLDER RELEASE ARCHITECTURE[,ARCHITECTURE...]: makes it of Debian's smallest set of
# packages for the first architecture; those of the others can be installed beside them. It is
# to be thrown away, so dpkg does not wait for the disk.
system_make() {
  local mirror validity
  mirror=$(system_mirror) || return
  # A machine whose apt takes old lists of packages has a mirror that needs it.
  validity=$(apt-config dump --format '%F "%v";%n' Acquire::Check-Valid-Until)
  mmdebstrap --quiet --mode=root --variant=minbase --architectures="$3" \
    --dpkgopt=force-unsafe-io --aptopt='Acquire::Languages "none"' ${validity:+"--aptopt=$validity"} \
    "$2" "$1" "$mirror" || return
  printf '#!/bin/sh\nexit 101\n' >"$1/usr/sbin/policy-rc.d" # Services stay as they are.
  chmod +x "$1/usr/sbin/policy-rc.d"
}

# system_enter FOLDER: sets `inside` to the words that run a command in that system, with nothing
# of this one's environment. What the command mounts ends with it. The folder is mounted on
# itself, because mounts can be made private only below a mount.
system_enter() {
  # shellcheck disable=SC2016,SC2034 # for the shell with mounts of its own; read by the script
  inside=(env -i PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin
    HOME=/root LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive http_proxy="${http_proxy:-}"
    unshare --mount sh -euc 'root=$1
      shift
      mount --bind "$root" "$root"
      mount -t proc proc "$root/proc"
      mount -t devpts devpts "$root/dev/pts"
      exec chroot "$root" "$@"' - "$1")
}
