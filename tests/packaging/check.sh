# shellcheck shell=bash
# What the shell tests of the packaging have in common: named checks, counted.
#
# A test script sources this file, makes its checks, and ends with `check_end`.

checks=0
failures=0

# check NAME COMMAND [ARGUMENT...]: the rule NAME holds if the command succeeds.
check() {
  check_name=$1
  shift
  checks=$((checks + 1))
  if ! "$@"; then
    failures=$((failures + 1))
    echo "FAILED: $check_name" >&2
    echo "        $*" >&2
  fi
}

# same EXPECTED ACTUAL: two texts, shown when they differ.
same() {
  [ "$1" = "$2" ] || {
    printf 'expected: %s\nactual:   %s\n' "$1" "$2" >&2
    return 1
  }
}

not() { ! "$@"; }

# has_text FILE TEXT, lacks_text FILE TEXT: what a program wrote. An empty file lacks nothing:
# its program has not run.
has_text() { grep -qF -- "$2" "$1" || { cat "$1" >&2 && return 1; }; }
lacks_text() { [ -s "$1" ] && ! grep -qF -- "$2" "$1"; }

# trust_own_filters FOLDER: lets cupstestppd pass filters that do not belong to root, as the
# scheduler of an ordinary user does. The folder is for this, and goes on the path.
trust_own_filters() {
  mkdir "$1"
  printf '#!/bin/sh\nexec %s -I filters "$@"\n' "$(command -v cupstestppd)" >"$1/cupstestppd"
  chmod +x "$1/cupstestppd"
  PATH=$1:$PATH
}

check_end() {
  echo "$checks checks, $failures failed"
  [ "$checks" -gt 0 ] && [ "$failures" -eq 0 ]
}
