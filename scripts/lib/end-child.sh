# shellcheck shell=bash disable=SC2034 # child_status is for the caller
# Ending a program that a script has started.

# end_child PID...: ends these children, also those that have been stopped, and returns when they
# have ended; the exit status of the last is in $child_status. One that has ended before gets no
# signal: by now its number may be another program's. What is ending is not to be continued: a
# sanitizer stops it to look for leaks, and would wait for ever.
end_child() {
  local child running
  running=" $(jobs -pr | tr '\n' ' ')"
  for child; do
    [[ $running == *" $child "* ]] || continue
    kill -CONT "$child" 2>/dev/null || true
    kill "$child" 2>/dev/null || true
  done
  for child; do
    child_status=0
    wait "$child" 2>/dev/null || child_status=$?
  done
}
