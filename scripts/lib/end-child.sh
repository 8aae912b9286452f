# shellcheck shell=bash
# Ending a program that a script has started.

# end_child PID...: ends these children, also those that have been stopped, and returns when they
# have ended. Harmless for one that has ended before.
end_child() {
  local child
  for child; do kill "$child" 2>/dev/null && kill -CONT "$child" 2>/dev/null || true; done
  for child; do wait "$child" 2>/dev/null || true; done
}
