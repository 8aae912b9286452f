# shellcheck shell=bash disable=SC2034,SC2154 # shares its variables with queue.sh and oracle.sh
# What chance makes of a printer and of the job that is sent to it. RANDOM is seeded by the
# script that sources this; a subshell would draw from another sequence, so results come in
# variables.

mapfile -t ERRORS < <(printf '%s\n' "${!REASON_NUMBERS[@]}" | sort)
JOBS=('ReportStatus' 'ReportLevels' 'ReportLevels ReportStatus' 'ReportStatus ReportLevels'
  'reportlevels REPORTSTATUS' 'REPORTLEVELS' 'reportStatus' 'Clean ReportStatus' 'Clean'
  'ReportStatus ReportStatus' 'ReportLevel ReportStatuses')

# chance N: true in one of N cases.
chance() {
  ((RANDOM % $1 == 0))
}

# bytes N: that many random bytes in `drawn`, as two hexadecimal digits each.
bytes() {
  local i
  printf -v drawn '%02x' $((RANDOM % 256))
  for ((i = 1; i < $1; ++i)); do printf -v drawn '%s %02x' "$drawn" $((RANDOM % 256)); done
}

# A count of prints in `drawn`: mostly one that a ribbon may have, else an odd one.
count() {
  if chance 6; then
    local odd=(0 0 1 32768 65534 65535)
    drawn=${odd[RANDOM % 6]}
  else
    drawn=$((RANDOM % 800))
  fi
}

# A printer's state: error, total, remaining, sheet; and answers, whether it answers in full.
random_state() {
  case $((RANDOM % 4)) in
    0) error='00 00 00' ;;
    1) bytes 3; error=$drawn ;;
    *) error=${ERRORS[RANDOM % ${#ERRORS[@]}]} ;;
  esac
  count; total=$drawn
  count; remaining=$drawn
  bytes 1
  local sheets=(84 8f ff 00 "$drawn")
  sheet=${sheets[RANDOM % 5]}
  answers=yes
}

# How the printer answers, in `manner`, one order a line: whole or in pieces, late, after
# some sleep, with a longer reply; too short or not at all.
random_manner() {
  local silent='off' length=192 asleep=0 delay=0 fragments=whole
  case $((RANDOM % 16)) in
    0) silent=on answers=no ;;
    1) length=$((RANDOM % 192)) answers=no ;;
    2) length=$((192 + RANDOM % 321)) ;;
    3) asleep=$((1 + RANDOM % 2)) ;;
    4 | 5 | 6) fragments=$((1 + RANDOM % 100)),$((1 + RANDOM % 100)) delay=$((RANDOM % 20)) ;;
  esac
  bytes 4
  manner="silent $silent
reply-length $length
asleep $asleep
delay $delay
fragments $fragments
mechanism ${drawn:0:5}
memory ${drawn:6:2}"
}

# The directives of a job, in `directives`; now and then very many of them.
random_job() {
  read -ra directives <<<"${JOBS[RANDOM % ${#JOBS[@]}]}"
  if [[ $answers == yes ]] && chance 32; then
    local i once=("${directives[@]}")
    for ((i = 0; i < 100; ++i)); do directives+=("${once[@]}"); done
  fi
}
