#!/bin/bash
# The manual page of velmoctl names every command and option that --help names, and no other.
set -eu
: "${VELMOCTL:?}"
# shellcheck source=tests/harness/expect.sh
. "$(dirname "$0")/../harness/expect.sh"

# The first words of the lines of one section of a help text; CLI11 2.6 writes its head large and
# its options further in.
words_of() {
  "$VELMOCTL" "${@:2}" --help | sed -n "/^$1:/I,/^\$/s/^ \{2,12\}\(-*[a-z][a-z-]*\).*/\1/p"
}

commands=$(words_of Subcommands | LC_ALL=C sort)
options=$(words_of Options)
for command in $commands; do options+=$'\n'$(words_of Options "$command"); done
options=$(LC_ALL=C sort -u <<<"$options")
expect_part 'the options are found' "$options" --while-printing

page=$root/packaging/velmoctl.1
expect 'the commands' "$(sed -n 's/^\.Cm \([a-z-]*\)$/\1/p; s/^\.It Cm \([a-z-]*\)$/\1/p' "$page" | LC_ALL=C sort -u)" "$commands"
expect 'the options' "$(grep -oE '(Fl|\|) -?-?[a-z][a-z-]*' "$page" | sed 's/.* /-/' | LC_ALL=C sort -u)" "$options"
expect_end
