#!/bin/sh
# A build against libcups 3 ends with a sentence that says why, not with missing names.
set -eu
cd "$(dirname "$0")/../.."

headers=$(mktemp -d)
trap 'rm -rf "$headers"' EXIT
mkdir "$headers/cups"
echo '#define CUPS_VERSION_MAJOR 3' >"$headers/cups/cups.h"

if messages=$(${CXX:-c++} -std=c++20 -I"$headers" -I. -fsyntax-only driver/report_commands.cpp 2>&1); then
  echo "FAILED: it compiles"
  exit 1
fi
echo "$messages" | grep -q 'error: .*commandtovelmo needs libcups 2' || {
  echo "FAILED: the message is"
  echo "$messages"
  exit 1
}
