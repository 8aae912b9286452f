#!/bin/bash
# A build against libcups 3 ends with a sentence that says why, not with missing names.
# Environment: CXX, the compiler.
set -eu
cd "$(dirname "$0")/../.."
# shellcheck source=scripts/lib/on-exit.sh
. scripts/lib/on-exit.sh
# shellcheck source=tests/harness/expect.sh
. tests/harness/expect.sh

headers=$(mktemp -d)
on_exit "rm -rf '$headers'"
mkdir "$headers/cups"
echo '#define CUPS_VERSION_MAJOR 3' >"$headers/cups/cups.h"

status=0
messages=$("${CXX:-c++}" -std=c++20 -I"$headers" -I. -fsyntax-only driver/report_commands.cpp 2>&1) ||
  status=$?
expect_that 'it does not compile' test "$status" -ne 0
expect_part 'the reason is said' "$messages" 'commandtovelmo needs libcups 2'
expect_end
