# shellcheck shell=bash disable=SC2034,SC2154 # shares its queue, its colours and its count with scripts/demo
# The scenes of scripts/demo --fresh: people print and change the ribbon, and the level moves by
# itself, because velmoctl keep-fresh is running.

LONG=120 # seconds: more than keep-fresh waits for anything

keep_fresh() {
  scheduler_exec build/demo/admin/velmoctl keep-fresh "$@" photo 2>"$printer_dir/keeper" &
  keeper=$!
}

# print COUNT: sends photos, and returns when the last of them has come out.
print() {
  local i
  for ((i = 0; i < $1; ++i)); do
    scheduler_client lp -d photo -o raw >/dev/null <<<'a photo'
  done
  wait_until "$LONG" nothing_waits || scheduler_fail 'the prints do not end'
}
nothing_waits() { [[ $(shown_by_queue queued-job-count) == 0 ]]; }

# What the queue shows, in one line: bar, percent, prints.
ribbon() { velmoctl status photo | sed -n 's/^ *Ribbon *//p' | grep . || echo 'not known'; }
reasons() { shown_by_queue printer-state-reasons; }

# has_become MESSAGE REASONS: whether the queue shows this; tells what it shows when that has changed.
has_become() {
  local now is_right=no
  [[ $(shown_by_queue marker-message) != "$1" || $(reasons) != "$2" ]] || is_right=yes
  now="$(ribbon)  $(reasons)"
  if [[ $now != "$ribbon_told" ]]; then
    printf '  %2d s  %s\n' $((SECONDS - scene_begin)) "$now"
    ribbon_told=$now
  fi
  [[ $is_right == yes ]] || ! sleep 0.5
}

# fresh_scene TITLE PRINTS MESSAGE REASONS: prints, and watches the queue until it shows this.
fresh_scene() {
  echo
  echo "$BOLD$1$PLAIN"
  scene_begin=$SECONDS
  print "$2"
  scene_begin=$SECONDS
  if wait_until "$LONG" has_become "Prints Remaining = $3" "$4"; then
    echo "  ${GREEN}As simulated.$PLAIN"
  else
    expect 'the count of prints' "$(shown_by_queue marker-message)" "Prints Remaining = $3"
    expect 'the list of state reasons' "$(reasons)" "$4"
  fi
}

play_fresh() {
  ribbon_told=''
  echo
  echo 'velmoctl keep-fresh photo is started. From here on nobody else asks the printer. Left: seconds'
  echo 'since the last print came out; two asks are 15 seconds apart.'
  # For the last scene a queue without prints is asked every 24 seconds, and not every 30 minutes.
  keep_fresh --idle 0.4
  fresh_scene 'Scene 1: nobody has printed yet' 0 '350 / 700' none
  sleep 13
  fresh_scene 'Scene 2: later a photo is printed' 1 '349 / 700' none
  fresh_scene 'Scene 3: at once five more, one after the other' 5 '344 / 700' none
  printer_tell remaining 3
  fresh_scene 'Scene 4: the last three photos of the ribbon' 3 '0 / 700' com.velmo-error0005
  printer_tell remaining 700
  fresh_scene 'Scene 5: a new ribbon is put in, and nobody prints' 0 '700 / 700' none
}
