#!/usr/bin/env bash
# The render keys in a real window: each changes what it should and nothing breaks; the window can be closed.
# Usage: game_keys_test.sh GAME DATA
set -euo pipefail
# shellcheck source=tests/display/screen.sh
. "$(dirname "$0")/screen.sh"
# shellcheck source=tests/display/game.sh
. "$(dirname "$0")/game.sh"

# press KEY: the game goes on after it.
press() {
  hold_key "$1" 0.15
  sleep 0.2
  running "$program_pid" || fail "$1 ends the game"
}

# tap KEY NAME: presses the key and takes a picture of what it did.
tap() {
  press "$1"
  sleep 0.2
  picture "$scratch/$2.ppm"
}

# changes NAME NAME LEAST
changes() {
  local found
  found=$(difference "$scratch/$1.ppm" "$scratch/$2.ppm")
  [ "$found" -ge "$3" ] || fail "$2 looks like $1: a difference of $found per mille, expected $3"
}

# resembles NAME NAME MOST
resembles() {
  local found
  found=$(difference "$scratch/$1.ppm" "$scratch/$2.ppm")
  [ "$found" -le "$3" ] || fail "$2 does not look like $1: a difference of $found per mille, at most $3 expected"
}

open_screen 1024x768
start_game "$1" "$2"
picture "$scratch/plain.ppm"

tap F3 wireframe
changes plain wireframe 60
tap F3 filled
resembles plain filled 12
# Vertex arrays and buffers draw the same land as single calls do.
tap F6 arrays
resembles plain arrays 15
tap F6 buffers
resembles plain buffers 15
press F6
# Textures, lists and buffers live on in another kind of window.
tap F11 windowed
resembles plain windowed 20
tap F11 covering
resembles plain covering 20
# The water turns texturing on again in every frame, so T shows in one frame at most.
for key in F2 F4 F5 F7 F8 F9 t; do
  press $key
  press $key
done
picture "$scratch/twice.ppm"
resembles plain twice 20
# What the game has no use for does it no harm.
for key in F1 F10 F12 Tab Shift_L Control_L Page_Up KP_7 m minus; do
  press $key
done
quit_by_escape

# The window manager's wish, or the system's, closes it as well as Escape.
start_game "$1" "$2"
kill -TERM "$program_pid"
await_end 20
[ "$program_status" = 0 ] || fail "a closed window ends the game with status $program_status"
more_logged "$end_line" 0 || fail "the closed game did not take its services down"
