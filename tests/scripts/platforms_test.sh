#!/bin/bash
# docs/platforms.md tells of every platform and command that scripts/matrix knows, and of no other.
# Usage: platforms_test.sh
set -eu
# shellcheck source=tests/harness/expect.sh
. "$(dirname "$0")/../harness/expect.sh"
# shellcheck source=scripts/lib/figures.sh
. "$root/scripts/lib/figures.sh"

# shellcheck disable=SC2016 # marks of Markdown
told=$(figures "$root/docs/platforms.md" matrix |
  sed -n 's/^| \([^ ]*\) | `scripts\/\(.*\)` | .*/\1\/\2/p')
expect 'the platforms in docs/platforms.md' "$told" "$("$root/scripts/matrix" --list)"
expect_end
