#!/bin/bash
# The version stands in CMakeLists.txt; whatever has to repeat it says the same.
# Usage: versions_test.sh PROGRAM...   (the programs just built that take --version)
set -eu
# shellcheck source=tests/harness/expect.sh
. "$(dirname "$0")/../harness/expect.sh"

version=$(sed -n 's/^project(.* VERSION \([0-9.]*\) .*/\1/p' "$root/CMakeLists.txt")
expect_part 'the version in CMakeLists.txt' "$version" .

for program; do
  expect "${program##*/} --version" "$("$program" --version 2>&1)" "${program##*/} $version"
done

for page in commandtovelmo.8 velmoctl.1; do
  expect "the version in packaging/$page" "$(sed -n 's/^\.Os //p' "$root/packaging/$page")" \
    "commandtovelmo $version"
done
expect 'the first line of debian/changelog' "$(head -n 1 "$root/debian/changelog")" \
  "printer-driver-velmo-command ($version) unstable; urgency=medium"
expect 'the version in packaging/commandtovelmo.spec' \
  "$(sed -n 's/^Version: *//p' "$root/packaging/commandtovelmo.spec")" "$version"
expect_part 'the newest change in packaging/commandtovelmo.spec' \
  "$(grep -m 1 '^[*] ' "$root/packaging/commandtovelmo.spec")" " - $version-1"
expect 'the first version of CHANGELOG.md' \
  "$(sed -n 's/^## \([0-9.]*\).*/\1/p' "$root/CHANGELOG.md" | head -n 1)" "$version"
expect_end
