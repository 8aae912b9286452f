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

check_end() {
  echo "$checks checks, $failures failed"
  [ "$checks" -gt 0 ] && [ "$failures" -eq 0 ]
}
