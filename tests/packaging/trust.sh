# shellcheck shell=bash
# Filters of an ordinary user, whose private scheduler trusts them.

# trust_own_filters FOLDER: lets cupstestppd pass filters that do not belong to root, as the
# scheduler of an ordinary user does. The folder is for this, and goes on the path.
trust_own_filters() {
  mkdir "$1"
  printf '#!/bin/sh\nexec %s -I filters "$@"\n' "$(command -v cupstestppd)" >"$1/cupstestppd"
  chmod +x "$1/cupstestppd"
  PATH=$1:$PATH
}
