# shellcheck shell=bash
# What a shell test expects. A failure says where in the test, what is and what should be; the
# test goes on after it, and ends with `expect_end`.

# shellcheck disable=SC2034 # of the tree, for the tests
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
expectations=0
failures=0
expect_shown='' # the text that a failure showed last; it is not shown twice in a row
EXPECT_LINES=30 # of a text are shown
EXPECT_FRAME=-2 # of the call stack, which names the test's line in a failure: the outermost

# expect WHAT IS SHOULD: compares two texts byte by byte.
expect() {
  expectations=$((expectations + 1))
  [[ $2 == "$3" ]] || expect_failed "$1" "$(expect_first_difference "$2" "$3")"
}

# expect_part WHAT TEXT PART: the part stands somewhere in the text.
expect_part() {
  expectations=$((expectations + 1))
  [[ $2 == *"$3"* ]] || expect_text_failed "$1" "should be in it: \"$3\"" "$2"
}

# expect_no_part WHAT TEXT PART: the part stands nowhere in the text. An empty text lacks
# nothing: its program has not run.
expect_no_part() {
  expectations=$((expectations + 1))
  [[ $2 && $2 != *"$3"* ]] || expect_text_failed "$1" "should be something without \"$3\"" "$2"
}

# expect_that WHAT COMMAND [ARGUMENT...]: the command succeeds; what it writes is shown if not.
# It runs in a shell of its own.
expect_that() {
  local written
  expectations=$((expectations + 1))
  written=$("${@:2}" 2>&1) || expect_text_failed "$1" "should succeed: ${*:2}" "$written"
}

not() { ! "$@"; }

# expect_good_ends NAME PID...: waits for these children, NAME0, NAME1 and so on, which end well.
expect_good_ends() {
  local child status number=0
  for child in "${@:2}"; do
    status=0
    wait "$child" || status=$?
    expect "the exit status of $1$number" "$status" 0
    number=$((number + 1))
  done
}

# expect_failed WHAT TEXT: counts a failure and tells it, with the line of the test.
expect_failed() {
  failures=$((failures + 1))
  printf 'FAILED: %s:%s: %s\n' "${0##*/}" "${BASH_LINENO[EXPECT_FRAME]}" "$1"
  echo "  ${2//$'\n'/$'\n'  }"
}

# expect_text_failed WHAT WISH TEXT: the same for a whole text.
expect_text_failed() {
  expect_failed "$1" "$2"
  case $3 in
    '') echo '  is nothing' ;;
    "$expect_shown") echo '  is the text above' ;;
    *) head -n "$EXPECT_LINES" <<<"  | ${3//$'\n'/$'\n'  | }" ;;
  esac
  expect_shown=$3
}

# give_up WHAT IS SHOULD: tells a wait in vain and ends the test, because what follows would wait in
# vain, too.
give_up() {
  expect_failed "$1" "is        \"$2\"
should be \"$3\""
  exit 1
}

# give_up_text WHAT WISH TEXT: the same for a whole text.
give_up_text() {
  expect_text_failed "$@"
  exit 1
}

# The first line in which two texts differ.
expect_first_difference() {
  local is should line=0
  mapfile -t is <<<"$1"
  mapfile -t should <<<"$2"
  while [[ ${is[line]-no line} == "${should[line]-no line}" ]]; do line=$((line + 1)); done
  ((${#is[@]} == 1 && ${#should[@]} == 1)) || echo "line $((line + 1))"
  ((line < ${#is[@]})) && echo "is        \"${is[line]}\"" || echo 'is        missing'
  ((line < ${#should[@]})) && echo "should be \"${should[line]}\"" || echo 'should be missing'
}

# The last line of a test: its status is the test's.
expect_end() {
  echo "$expectations expectations, $failures failed"
  ((expectations > 0 && failures == 0))
}
