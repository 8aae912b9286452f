#!/bin/bash
# What packagers rely on: the tree builds elsewhere, without git and network, into the same
# executable each time, with their flags; and installs where they say, with the right modes.
# Usage: install_test.sh
set -eu

# shellcheck source=tests/harness/expect.sh
. "$(dirname "$0")/../harness/expect.sh"
# shellcheck source=scripts/lib/on-exit.sh
. "$root/scripts/lib/on-exit.sh"

work=$(mktemp -d)
on_exit "rm -rf '$work'"

# Only what is shipped, in a folder with a blank, with nothing of git.
tree="$work/the tree"
mkdir "$tree"
cp -R "$root"/{CMakeLists.txt,admin,docs,driver,protocol,report,diag,packaging} "$tree"

# An ordinary user's own namespace has no network either.
offline=(unshare --net)
[[ $EUID -eq 0 ]] || offline=(unshare --map-root-user --net)
"${offline[@]}" true 2>/dev/null || {
  echo "left out: building without network, because this machine allows no namespaces"
  offline=()
}

# configure FOLDER [OPTION...]: the product alone, with no flags but those given.
configure() {
  "${offline[@]}" env -u CFLAGS -u CPPFLAGS CXXFLAGS="-O0 -frecord-gcc-switches" \
    LDFLAGS=-Wl,--build-id=0x00c0ffee cmake -S "$tree" -B "$work/$1" -G Ninja \
    -DCMAKE_BUILD_TYPE=None -DBUILD_TESTING=OFF -DVELMO_SIMULATOR=OFF "${@:2}"
}
build() { "${offline[@]}" cmake --build "$work/$1"; }

# installed FOLDER UMASK: installs it and writes mode and name of all that is then there.
installed() {
  local there="$work/$1 at $2"
  (umask "$2" && DESTDIR=$there cmake --install "$work/$1") >"$work/log" 2>&1 || cat "$work/log"
  (cd "$there" && find . -mindepth 1 -printf '%m %P\n' | LC_ALL=C sort -k 2)
}

# The scheduler's own folder, whoever tells it.
expect_that "it is configured as it comes" configure 'as it comes'
expect_that "it is built" build 'as it comes'
programs=$(cups-config --serverbin)
expect "the filter is where the scheduler looks, and the modes are right under umask 077" \
  "$(installed 'as it comes' 077 | grep -E '^755 |^644 ' | grep -E '/(bin|man.|docs|commandtovelmo.*|velmoctl.*|json.md)$')" \
  "755 ${programs#/}/filter/commandtovelmo
755 usr/local/bin
755 usr/local/bin/velmoctl
755 usr/local/share/doc/commandtovelmo
755 usr/local/share/doc/commandtovelmo/docs
644 usr/local/share/doc/commandtovelmo/docs/json.md
644 usr/local/share/doc/commandtovelmo/docs/velmoctl-list.schema.json
644 usr/local/share/doc/commandtovelmo/docs/velmoctl-status.schema.json
755 usr/local/share/man/man1
644 usr/local/share/man/man1/velmoctl.1
755 usr/local/share/man/man8
644 usr/local/share/man/man8/commandtovelmo.8"

expect_that "another place is taken, and the filter alone" configure 'other place' \
  -DCUPS_FILTER_DIR=/srv/cups/filter -DCMAKE_INSTALL_PREFIX=/opt/velmo -DVELMO_ADMIN=OFF
expect_that "it is built again" build 'other place'
all='755 opt
755 opt/velmo
755 opt/velmo/share
755 opt/velmo/share/man
755 opt/velmo/share/man/man8
644 opt/velmo/share/man/man8/commandtovelmo.8
755 srv
755 srv/cups
755 srv/cups/filter
755 srv/cups/filter/commandtovelmo'
for mask in 000 022 077; do
  expect "all that is installed there under umask $mask" "$(installed 'other place' $mask)" "$all"
done

filter="$work/as it comes/commandtovelmo"
expect_that "both builds give the same filter" cmp "$filter" "$work/other place/commandtovelmo"
expect_part "the flags of the linker are respected" "$(readelf --notes "$filter")" 'Build ID: 00c0ffee'
expect "the flags of the compiler are respected, and no other level of optimization is set" \
  "$(grep -o ' -O[^ ]*' "$work/as it comes/compile_commands.json" | sort -u)" ' -O0'

# Where cups.pc is there and silent, cups-config is asked; where that is silent too, the person.
mkdir "$work/silent"
printf '%s\n' 'Name: cups' 'Description: as newer CUPS has it' 'Version: 2.4.10' 'Libs: -lcups' \
  >"$work/silent/cups.pc"
printf '#!/bin/sh\n' >"$work/silent/cups-config"
chmod +x "$work/silent/cups-config"
export PKG_CONFIG_PATH=$work/silent
folder_of() { sed -n 's/^CUPS_FILTER_DIR:[A-Z]*=//p' "$work/$1/CMakeCache.txt"; }

expect_that "a silent cups.pc is no fault" configure 'silent pc'
expect "cups-config is asked then" "$(folder_of 'silent pc')" "$programs/filter"
nobody=-DCUPS_CONFIG=$work/silent/cups-config
expect_that "nobody knows the folder: refused" not configure 'all silent' "$nobody"
expect_part "nobody knows the folder: the way out is said" \
  "$(configure 'all silent' "$nobody" 2>&1)" '-DCUPS_FILTER_DIR='
expect_that "nobody is asked when the folder is given" configure 'told' "$nobody" \
  -DCUPS_FILTER_DIR=/srv/cups/filter
expect_end
