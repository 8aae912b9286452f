#!/bin/bash
# The executable does not even import the calls that read the environment, start programs
# or threads, load code, or open connections.
# Usage: imports_test.sh FILTER
set -eu
# shellcheck source-path=SCRIPTDIR/../.. source=tests/harness/expect.sh
. "$(dirname "$0")/../harness/expect.sh"

forbidden='getenv|secure_getenv|environ|__environ|setenv|putenv'
forbidden="$forbidden|fork|vfork|clone|posix_spawnp?|exec[lv]p?e?|fexecve|system|popen|pthread_create"
forbidden="$forbidden|dlopen|dlsym|socket|connect|bind|listen|accept4?|getaddrinfo"

# What calls secure_getenv, by name.
askers() {
  objdump --disassemble --no-show-raw-insn "$1" | awk '
    /^[0-9a-f]+ <.*>:$/ { caller = $2; next }
    /<secure_getenv@/ && caller != "<secure_getenv@plt>:" { print caller }'
}

imports=$(nm -D --undefined-only --without-symbol-versions "$1" | awk '{ print $NF }')
expect_part 'a filter imports its way to write' " ${imports//$'\n'/ } " ' writev '

# The runtime of newer GCC (14, 16), linked in, lets the environment say how much memory it
# sets aside for exceptions, once, before main.
[ "$(askers "$1")" != "<_GLOBAL__sub_I_eh_alloc.cc>:" ] ||
  imports=$(echo "$imports" | grep -vx secure_getenv)

expect 'the forbidden imports' "$(grep -xE "$forbidden" <<<"$imports")" ''
expect_end
