#!/bin/bash
# Every command of scripts/ tells its purpose, its usage and its time before it installs or builds
# anything, and refuses what it does not know.
# Usage: commands_test.sh
set -eu
# shellcheck source=tests/harness/expect.sh
. "$(dirname "$0")/../harness/expect.sh"
# shellcheck source=scripts/lib/on-exit.sh
. "$root/scripts/lib/on-exit.sh"

work=$(mktemp -d)
on_exit "rm -rf '$work'"

# The commands stand alone in a tree where there is nothing to build, and the programs that install,
# build or start something only tell that they were run.
mkdir "$work/tree" "$work/programs"
cp -R "$root/scripts" "$work/tree/scripts"
for program in apt-get dpkg-query sudo cmake ctest ninja clang-format mmdebstrap unshare python3 \
  cupsd Xvfb dpkg-buildpackage git valgrind; do
  # shellcheck disable=SC2016 # known when it is run
  printf '#!/bin/sh\necho "%s" >>"$TOUCHED"\nexit 1\n' "$program" >"$work/programs/$program"
  chmod +x "$work/programs/$program"
done
export TOUCHED=$work/touched

# run COMMAND [ARGUMENT...]: what it writes is in `written` and `complaint`, its status in `status`.
run() {
  : >"$TOUCHED"
  status=0
  PATH=$work/programs:$PATH "$work/tree/scripts/$1" "${@:2}" \
    >"$work/written" 2>"$work/complaint" </dev/null || status=$?
  written=$(<"$work/written")
  complaint=$(<"$work/complaint")
}

expect_nothing_done() {
  expect "$1: the programs it runs" "$(<"$TOUCHED")" ''
  expect "$1: what it leaves in the tree" "$(find "$work/tree" | sort)" "$before"
}

before=$(find "$work/tree" | sort)
for file in "$root"/scripts/*; do
  [[ -f $file ]] || continue
  name=${file##*/}

  run "$name" --help
  expect "$name --help: the status" "$status" 0
  expect "$name --help: complaints" "$complaint" ''
  expect_that "$name --help: begins with a sentence" grep -qE '^[A-Z].{20}' <(head -n 1 <<<"$written")
  expect_part "$name --help: the usage" "$written" $'\n'"Usage: scripts/$name"
  expect_that "$name --help: the time" grep -qE '^Time: .+' <<<"$written"
  expect_nothing_done "$name --help"

  for argument in --frobnicate frobnicate; do
    run "$name" "$argument"
    expect "$name $argument: the status" "$status" 2
    expect_part "$name $argument: what is wrong" "$complaint" "$argument"
    expect_part "$name $argument: the usage" "$complaint" "Usage: scripts/$name"
    expect "$name $argument: it writes nothing else" "$written" ''
    expect_nothing_done "$name $argument"
  done
done
expect_end
