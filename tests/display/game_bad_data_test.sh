#!/usr/bin/env bash
# A game that cannot start says why, in a box and on stderr, and ends with a status that is not 0.
# Usage: game_bad_data_test.sh GAME
set -euo pipefail
# shellcheck source=tests/display/screen.sh
. "$(dirname "$0")/screen.sh"
game=$(readlink -f "$1")

# ends_with_box TEXT: the game, started in $scratch/data, shows a box about this text.
ends_with_box() {
  cd "$scratch/data"
  start_program env BRACKENMOOR_BOXES=yes "$game"
  await_end 20
  [ "$program_status" != 0 ] || fail "the game ends with status 0"
  grep "^ERROR: " "$scratch/err" | grep -qF -- "$1" || fail "no box with caption ERROR names $1"
  [ "$(grep -c "^ERROR: " "$scratch/err")" = 1 ] || fail "more than one box for one fault"
}

open_screen 1024x768
mkdir -p "$scratch/data/level"
ends_with_box "level/levels.lev"
echo 0 >"$scratch/data/level/levels.lev"
ends_with_box "level/levels.lev"
echo "1 nowhere" >"$scratch/data/level/levels.lev"
ends_with_box "level/nowhere.lev"
