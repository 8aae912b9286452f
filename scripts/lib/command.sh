# shellcheck shell=sh
# What every command of scripts/ does before it installs or builds anything: it tells what it is
# for when asked to, and refuses what it does not know.
#
# A command that measures takes --write first: then what it measured goes into docs/.
#
# Sourced from the root of the tree, as the first thing after `cd`. The comment at the head of the
# command is its help: the purpose, a line "Usage: scripts/NAME ...", a line "Time: ...".

command_help() {
  awk 'NR == 1 { next } !/^#/ { exit } { sub(/^# ?/, ""); print }' "scripts/${0##*/}"
}

# help_if_asked ARGUMENT...: ends the command with its help if an argument asks for it.
help_if_asked() {
  for argument; do
    case $argument in
      --help) command_help && exit 0 ;;
    esac
  done
}

# usage_error TEXT: ends the command with what is wrong about its arguments and how they should be.
usage_error() {
  echo "${0##*/}: $1" >&2
  command_help | sed -n '/^Usage:/,$p' >&2
  exit 2
}

# take_no_arguments ARGUMENT...: for a command that knows no argument but --help.
take_no_arguments() {
  help_if_asked "$@"
  [ $# -eq 0 ] || usage_error "unknown argument: $1"
}
