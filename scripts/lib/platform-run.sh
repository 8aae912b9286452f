# shellcheck shell=bash
# Runs commands of the tree in a platform's own Debian below build/matrix, and keeps their logs.

# shellcheck source-path=SCRIPTDIR source=on-exit.sh
. scripts/lib/on-exit.sh
# shellcheck source-path=SCRIPTDIR source=fresh-system.sh
. scripts/lib/fresh-system.sh
# shellcheck source-path=SCRIPTDIR source=emulation.sh
. scripts/lib/emulation.sh

matrix=$PWD/build/matrix
page=docs/platforms.md
child=

fail() {
  echo "matrix: $*" >&2
  exit 1
}

# Ends what runs in a system, with its mounts.
stop() {
  if [[ $child ]]; then
    kill -KILL -- "-$child" 2>/dev/null || true
    wait "$child" 2>/dev/null || true
  fi
  emulation_stop
}

# attend COMMAND...: runs it beside this script, which so hears a signal at once, and as a process
# group of its own, which then can be ended whole.
attend() {
  local status=0
  set -m
  "$@" </dev/null 9>&- &
  child=$!
  set +m
  wait "$child" || status=$?
  child=
  return "$status"
}

# Takes the tree as it lies here, with what is not committed yet but without what git ignores.
# Its key, by which results are kept, leaves out the page that is made of them.
take_tree() {
  export GIT_INDEX_FILE=$matrix/index
  git read-tree HEAD
  git add --all
  tree=$(git write-tree)
  git rm --quiet --cached --ignore-unmatch "$page"
  key=$(git write-tree)
  unset GIT_INDEX_FILE
  results=$matrix/results/$key
}

# make_system PLATFORM RELEASE ARCHITECTURES: unless an earlier run did.
make_system() {
  system=$matrix/systems/$1
  [[ ! -d $system ]] || return 0
  echo "== $1: a fresh $2, $3"
  mkdir -p "$matrix/systems"
  rm -rf --one-file-system "$system.new"
  attend system_make "$system.new" "$2" "$3" || fail "no system for $1"
  mv "$system.new" "$system"
}

# Lays the tree into the system, as a repository, without any build of an earlier one.
lay_tree() {
  [[ $(cat "$system/tree.key" 2>/dev/null) != "$key" ]] || return 0
  rm -rf "$system/tree" "$system/tree.key"
  mkdir "$system/tree"
  git archive "$tree" | tar --extract --directory "$system/tree"
  attend "${inside[@]}" sh -euc 'command -v git || {
      apt-get update
      apt-get install -y --no-install-recommends git
    }
    git -C /tree init
    git -C /tree add --all' >"$matrix/prepare.log" 2>&1 || fail "see $matrix/prepare.log"
  echo "$key" >"$system/tree.key"
}

# prepare PLATFORM: sets `system`, its folder, and `inside`, the words that run a command there.
prepare() {
  local name release architectures
  while read -r name release architectures _; do
    [[ $name != "$1" ]] || break
  done < <(platforms)
  make_system "$name" "$release" "$architectures"
  system_enter "$system"
  # With processes of its own, of which none outlives the first.
  inside=(unshare --pid --fork --kill-child "${inside[@]}")
  lay_tree
  emulation_stop
  if [[ $architectures == *,* ]]; then
    attend "${inside[@]}" /tree/scripts/install-packages emulation || fail "no emulation on $1"
    emulation_start "$system" "${architectures#*,}"
  fi
}

# passed PLATFORM/COMMAND: whether it has passed on this tree.
passed() {
  [[ -f $results/$1.result && $(head -n 1 "$results/$1.result") == passed ]]
}

# run PLATFORM/COMMAND: runs it in the prepared system, and keeps its log and its result: a line
# for the outcome, one for what it came to.
run() {
  local outcome=passed start=$SECONDS log=$results/$1.log command
  mkdir -p "${log%/*}"
  echo "== $1"
  read -ra command <<<"${1#*/}"
  attend "${inside[@]}" "/tree/scripts/${command[0]}" "${command[@]:1}" >"$log" 2>&1 ||
    outcome=failed
  # shellcheck disable=SC2016 # for the shell inside
  attend "${inside[@]}" sh -euc 'printf "Debian %s, GCC %s" \
      "$(cat /etc/debian_version)" "$(g++ -dumpfullversion)"
    ! command -v clang >/dev/null || printf ", Clang %s" "$(clang -dumpversion)"
    dpkg-query -W -f ", CUPS \${source:Upstream-Version}\n" libcups2-dev | head -n 1' \
    >"$results/${1%%/*}.versions" 2>/dev/null || true
  printf '%s\n%s%s minutes\n' "$outcome" \
    "$(sed -n 's/.* tests failed out of \([0-9]*\)$/\1 tests, /p' "$log")" \
    "$(((SECONDS - start + 59) / 60))" >"$results/$1.result"
  [[ $outcome == passed ]] || {
    tail -n 30 "$log"
    echo "matrix: $1 failed, all of it: ${log#"$PWD/"}"
  } >&2
}
