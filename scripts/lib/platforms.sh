# shellcheck shell=bash
# The platforms that the tree is held on, and the commands of scripts/ that run on each.

# platforms: lines of NAME RELEASE ARCHITECTURES COMMAND|COMMAND... A system's own architecture
# comes first; that of a second one is built for and emulated.
platforms() {
  local all='demo|test sanitize-gcc|test sanitize-clang|test release|package|test-package'
  cat <<END
debian12-amd64 bookworm amd64       check|$all|fuzz 20
debian13-amd64 trixie   amd64       $all
sid-amd64      sid      amd64       demo|test release|package
debian13-i386  trixie   i386        test release
debian12-arm64 bookworm amd64,arm64 test-package arm64
debian13-arm64 trixie   amd64,arm64 cross-test arm64|test-package arm64
debian13-armhf trixie   amd64,armhf cross-test armhf|test-package armhf
debian13-s390x trixie   amd64,s390x cross-test s390x
END
}

# left_out: what the lines above leave out, as lines of PLATFORMS|COMMANDS|REASON.
left_out() {
  cat <<'END'
all but debian12-amd64|check, fuzz|they hold the sources, with the tools of one release
all but Debian 12 and 13 on amd64|test sanitize-gcc, test sanitize-clang|memory errors are looked for there
arm64, armhf, s390x|demo, test release|nothing can trace an emulated program, and cupsd has one job there, in test-package; cross-test runs the rings unit, program and sim
debian12-arm64|cross-test|its CMake cannot leave tests out by name; the package's command job runs
sid-amd64, i386, s390x|test-package|the package is meant for releases, and for what stands in photo booths
i386, s390x|demo, package|test release and cross-test run the code there
END
}

# planned [PLATFORM | PLATFORM/COMMAND]...: lines of PLATFORM/COMMAND; without arguments all.
planned() {
  local name commands command argument
  while read -r name _ _ commands; do
    while read -r -d '|' command; do
      [[ $# -gt 0 ]] || echo "$name/$command"
      for argument; do
        [[ $argument != "$name" && $argument != "$name/$command" ]] || echo "$name/$command"
      done
    done <<<"$commands|"
  done < <(platforms)
}
