#!/bin/sh
# The executable does not even import the calls that read the environment, start programs
# or threads, load code, or open connections.
# Usage: imports_test.sh FILTER
set -eu

forbidden='getenv|secure_getenv|environ|__environ|setenv|putenv'
forbidden="$forbidden|fork|vfork|clone|posix_spawnp?|exec[lv]p?e?|fexecve|system|popen|pthread_create"
forbidden="$forbidden|dlopen|dlsym|socket|connect|bind|listen|accept4?|getaddrinfo"

imports=$(nm -D --undefined-only --without-symbol-versions "$1" | awk '{ print $NF }')
echo "$imports" | grep -qx writev || {
  echo "not a filter, or not readable: $1" >&2
  exit 1
}
if found=$(echo "$imports" | grep -xE "$forbidden"); then
  echo "imported:" "$found" >&2
  exit 1
fi
