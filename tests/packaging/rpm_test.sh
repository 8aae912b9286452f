#!/bin/bash
# The package for systems with RPM: it is built, holds what it should, and rpmlint is silent.
# Usage: rpm_test.sh
set -eu

# shellcheck source=tests/harness/expect.sh
. "$(dirname "$0")/../harness/expect.sh"
# shellcheck source=scripts/lib/on-exit.sh
. "$root/scripts/lib/on-exit.sh"

work=$(mktemp -d)
on_exit "rm -rf '$work'"

# Neither the user's macros nor the user's language matter.
export HOME=$work LC_ALL=C.UTF-8
unset LANG LANGUAGE

spec=$root/packaging/commandtovelmo.spec
version=$(sed -n 's/^Version: *//p' "$spec")
name=commandtovelmo-$version

mkdir -p "$work/$name" "$work/SOURCES"
cp -R "$root"/{CMakeLists.txt,LICENSE,admin,driver,protocol,report,diag,docs,packaging} "$work/$name"
tar --create --gzip --directory "$work" --file "$work/SOURCES/$name.tar.gz" "$name"

# Debian's RPM knows none of the packages that it is built with, strips no program and compresses
# no manual page.
(umask 077 && rpmbuild -bb --nodeps --define "_topdir $work" --define '_build_id_links none' \
  --define 'debug_package %{nil}' \
  --define '__os_install_post bash /usr/lib/rpm/brp-compress; strip %{buildroot}%{_cups_serverbin}/filter/* %{buildroot}%{_bindir}/*' "$spec") \
  >"$work/log" 2>&1 || tail -n 30 "$work/log"
rpm=$(find "$work/RPMS" -name '*.rpm')

asked() { rpm --query --package --dbpath "$work/db" "$@" "$rpm"; }
programs=$(cups-config --serverbin)
expect "what is in it, with modes and owners" \
  "$(asked --qf '[%{FILEMODES:perms} %{FILEUSERNAME}:%{FILEGROUPNAME} %{FILENAMES}\n]')" \
  "-rwxr-xr-x root:root /usr/bin/velmoctl
-rwxr-xr-x root:root $programs/filter/commandtovelmo
drwxr-xr-x root:root /usr/share/doc/commandtovelmo
drwxr-xr-x root:root /usr/share/doc/commandtovelmo/docs
-rw-r--r-- root:root /usr/share/doc/commandtovelmo/docs/json.md
-rw-r--r-- root:root /usr/share/doc/commandtovelmo/docs/velmoctl-list.schema.json
-rw-r--r-- root:root /usr/share/doc/commandtovelmo/docs/velmoctl-status.schema.json
drwxr-xr-x root:root /usr/share/licenses/$name
-rw-r--r-- root:root /usr/share/licenses/$name/LICENSE
-rw-r--r-- root:root /usr/share/man/man1/velmoctl.1.gz
-rw-r--r-- root:root /usr/share/man/man8/commandtovelmo.8.gz"
expect_part "it needs the scheduler" "$(asked --requires)" "cups"$'\n'

# What distributions tell their rpmlint: this one asks for tags that RPM has dropped, for a
# signature, a download and tests, whose libraries a package build does without; and takes a
# manual page's section for its name.
cat >"$work/rpmlint.toml" <<'END'
CompressExtension = "gz"
ValidLicenses = ["Apache-2.0"]
Filters = ["no-buildroot-tag", "no-group-tag", "no-packager-tag", "no-signature", "no-%check-section",
           "invalid-url Source0", "no-manual-page-for-binary velmoctl", "spelling-error .*velmoctl"]
END
expect_that "rpmlint is silent" rpmlint --strict --config "$work/rpmlint.toml" "$spec" "$rpm"
expect_end
