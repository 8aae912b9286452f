# shellcheck shell=bash disable=SC2154,SC2034 # shares its variables with queue.sh
# What a queue must show, from the rules and the printer's state alone.

# The error codes that have a keyword, with its number.
declare -A REASON_NUMBERS=(
  ['06 02 02']=0001 ['09 02 02']=0002 ['03 01 01']=0003 ['08 01 01']=0004
  ['05 02 02']=0005 ['fe ed 01']=0005 ['02 02 02']=0006 ['04 03 04']=0007 ['07 03 03']=0008
  ['20 07 07']=0009 ['21 07 07']=0009 ['23 07 07']=0009 ['26 07 07']=0009
  ['27 07 07']=0009 ['28 07 07']=0009 ['29 07 07']=0009
  ['0a 05 05']=0010 ['0b 05 07']=0011 ['30 09 07']=0012
  ['37 09 0f']=0013 ['31 09 07']=0013 ['32 09 0f']=0013 ['33 09 0f']=0013
  ['34 09 07']=0013 ['36 09 0f']=0013
  ['3a 0a 0f']=0014 ['3b 0a 0f']=0014 ['3c 0a 0f']=0014 ['3d 0a 0f']=0014
  ['3e 0a 0f']=0014 ['3f 0a 0f']=0014 ['40 0e 0f']=0014
  ['0c 0f 00']=0018 ['01 06 06']=0020 ['0d 08 07']=0021 ['0e 08 07']=0021 ['10 08 08']=0022)

# The reason for the state of the printer: error, remaining, answers.
oracle_reason() {
  local state=$error
  ((remaining != 0)) || state='fe ed 01'
  [[ $answers == yes ]] || state=unavailable
  shown_reasons=com.velmo-error${REASON_NUMBERS[$state]:-0023}
  [[ $state != '00 00 00' ]] || shown_reasons=none
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
