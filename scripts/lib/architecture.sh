# shellcheck shell=sh
# Which of Debian's architectures a command is for.

# take_architecture [ARCHITECTURE]: sets `native` to this machine's and `architecture` to the one
# given, of which dpkg takes packages here; default: this machine's.
take_architecture() {
  help_if_asked "$@"
  native=$(dpkg --print-architecture)
  architecture=${1:-$native}
  [ $# -le 1 ] || usage_error "unknown argument: $2"
  { echo "$native" && dpkg --print-foreign-architectures; } | grep -qFx -e "$architecture" ||
    usage_error "dpkg takes no packages of this architecture here: $architecture"
}
