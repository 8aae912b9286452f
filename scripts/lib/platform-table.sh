# shellcheck shell=bash
# What the runs on the platforms came to, as a table.

# shellcheck source=scripts/lib/figures.sh
. scripts/lib/figures.sh
# shellcheck source-path=SCRIPTDIR source=platform-run.sh
. scripts/lib/platform-run.sh

# table [PLATFORM | PLATFORM/COMMAND]...: a line for each, then what is left out and why.
table() {
  local each outcome remark where what why
  echo '| platform | command | result | remark |'
  echo '|---|---|---|---|'
  while read -r each; do
    outcome='not run' remark=
    if [[ -f $results/$each.result ]]; then
      { read -r outcome && read -r remark; } <"$results/$each.result"
    fi
    echo "| ${each%%/*} | \`scripts/${each#*/}\` | $outcome | $remark |"
  done < <(planned "$@")
  while IFS='|' read -r where what why; do
    echo "| $where | $what | left out | $why |"
  done < <(left_out)
}

# The releases and compilers of the platforms.
versions() {
  local name
  while read -r name _; do
    [[ ! -f $results/$name.versions ]] || echo "- $name: $(cat "$results/$name.versions")"
  done < <(platforms)
}

# Writes the page's part between its marks anew, with the table just made.
write_page() {
  {
    # shellcheck disable=SC2016 # marks of Markdown
    printf '\nMade by `scripts/matrix` on %s.\n\n' "$(date -u +%Y-%m-%d)"
    cat "$matrix/table.md"
    echo
    versions
    echo
  } | write_figures "$page" matrix
}
