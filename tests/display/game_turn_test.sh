#!/usr/bin/env bash
# A whole turn with real keys and a real mouse: walk, aim, shot, crater, the next team's worm.
# Usage: game_turn_test.sh GAME DATA
set -euo pipefail
# shellcheck source=tests/display/screen.sh
. "$(dirname "$0")/screen.sh"
# shellcheck source=tests/display/game.sh
. "$(dirname "$0")/game.sh"
# Where the follow camera shows the label of the worm whose turn it is.
label=600x220+212+60

# more_than LIMIT VALUE WHAT
more_than() {
  [ "$2" -gt "$1" ] || fail "$3: $2 per mille, expected more than $1"
}

# turn_is_of TEAM COLOUR OTHER PICTURE: the label over the worm in front of the camera has the team's colour.
turn_is_of() {
  local its other
  its=$(share "$scratch/$4.ppm" "$2" $label)
  other=$(share "$scratch/$4.ppm" "$3" $label)
  if [ "$its" -le 10 ] || [ "$its" -le "$other" ]; then
    fail "it is not the turn of $1: $its per mille of its colour in the label, $other of the other's"
  fi
}

open_screen 1024x768
start_game "$1" "$2"

picture "$scratch/start.ppm"
more_than 40 "$(share "$scratch/start.ppm" 'g>1.2r g>1.5b')" "grass in the picture"
more_than 40 "$(share "$scratch/start.ppm" 'b>1.15r b>g')" "sky and sea in the picture"
turn_is_of bracken "$bracken" "$heather" start

hold_key w 0.8
picture "$scratch/walked.ppm"
more_than 15 "$(difference "$scratch/start.ppm" "$scratch/walked.ppm")" "change of the picture by walking"

move_mouse 0 -40
sleep 0.3
picture "$scratch/aimed.ppm"
more_than 15 "$(difference "$scratch/walked.ppm" "$scratch/aimed.ppm")" "change of the picture by aiming"

take_bazooka
picture "$scratch/armed.ppm"
fire 0.6
wait_until 5 more_logged "$rocket_line" 0 || fail "no rocket left the bazooka"
wait_until 8 more_logged "$cut_line" 0 || fail "no crater was cut"
sleep 0.8
picture "$scratch/crater.ppm"
# Still the same view: nothing else may count as bare earth.
changed=$(difference "$scratch/armed.ppm" "$scratch/crater.ppm")
[ "$changed" -le 60 ] || fail "the view changed by $changed per mille while the crater was cut"
before=$(share "$scratch/armed.ppm" "$bare_earth")
more_than $((before + 4)) "$(share "$scratch/crater.ppm" "$bare_earth")" "bare earth after the blast"

# The turn passes 2000 ms after the blast.
sleep 2.5
picture "$scratch/next.ppm"
turn_is_of heather "$heather" "$bracken" next

quit_by_escape
