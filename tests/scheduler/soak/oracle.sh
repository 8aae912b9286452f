# shellcheck shell=bash disable=SC2154,SC2034 # shares its variables with queue.sh
# What a queue must show, from the rules and the printer's state alone.

# The reason for the state of the printer: error, remaining, answers.
oracle_reason() {
  local number
  if [[ $answers == no ]]; then
    number=0023
  elif ((remaining == 0)); then
    number=0005
  else
    case $error in
      '00 00 00') shown_reasons=none; return ;;
      '06 02 02') number=0001 ;;
      '09 02 02') number=0002 ;;
      '03 01 01') number=0003 ;;
      '08 01 01') number=0004 ;;
      '05 02 02' | 'fe ed 01') number=0005 ;;
      '02 02 02') number=0006 ;;
      '04 03 04') number=0007 ;;
      '07 03 03') number=0008 ;;
      '20 07 07' | '21 07 07' | '23 07 07' | '26 07 07' | '27 07 07' | '28 07 07' | '29 07 07') number=0009 ;;
      '0a 05 05') number=0010 ;;
      '0b 05 07') number=0011 ;;
      '30 09 07') number=0012 ;;
      '37 09 0f' | '31 09 07' | '32 09 0f' | '33 09 0f' | '34 09 07' | '36 09 0f') number=0013 ;;
      '3a 0a 0f' | '3b 0a 0f' | '3c 0a 0f' | '3d 0a 0f' | '3e 0a 0f' | '3f 0a 0f' | '40 0e 0f') number=0014 ;;
      '0c 0f 00') number=0018 ;;
      '01 06 06') number=0020 ;;
      '0d 08 07' | '0e 08 07') number=0021 ;;
      '10 08 08') number=0022 ;;
      *) number=0023 ;;
    esac
  fi
  shown_reasons=com.velmo-error$number
}

# The marker for the state of the printer: total, remaining, sheet, answers.
oracle_marker() {
  shown_colors='#00FF00' shown_types=ink-ribbon
  shown_levels=-2 shown_message=' ' shown_names='Ribbon Type: 00'
  [[ $answers == yes ]] || return 0

  if ((remaining == 65535 || total == 65535 || total == 0)); then
    shown_levels=-1
  else
    shown_levels=$((remaining * 100 / total))
    shown_message="Prints Remaining = $remaining / $total"
  fi
  case $sheet in
    84) shown_names='Ribbon Type: 13x18(5x7″)' ;;
    8f) shown_names='Ribbon Type: 15x20(6x8″)' ;;
    ff) shown_names=' ' ;;
    *) shown_names="Ribbon Type: $sheet" ;;
  esac
}

# A queue that has seen no job yet.
oracle_start() {
  shown_reasons=none
  shown_colors='' shown_levels='' shown_message='' shown_names='' shown_types=''
}

# oracle_job CONNECTION DIRECTIVE...: what a job changes; a connection is twoway or oneway.
oracle_job() {
  local directive
  for directive in "${@:2}"; do
    case $1,${directive,,} in
      twoway,reportlevels) oracle_marker; oracle_reason ;;
      oneway,reportlevels) oracle_marker ;;
      *,reportstatus) oracle_reason ;;
    esac
  done
}
