# shellcheck shell=bash
# shellcheck disable=SC2034,SC2154 # shared with those who source this
# Sourced after screen.sh by what drives the game itself.
#
# The game tells what happens through its diagnostic log: one line for every rocket and for every piece of land a blast
# was cut out of. The tick stands at a fixed value while the level loads, so the worms always stand in the same places.

# Lines of the log.
rocket_line='Rocket constructed'
cut_line=' csgObject: Needed time for CSG boolean Operation '
end_line='ModuleManager Destruktor'

# Colours, as share takes them: what a crater shows, and the labels of the two teams.
bare_earth='r>1.2g g>1.15b r<0.75 r>0.1'
bracken='r>0.8 g>0.6 b<0.45'
heather='r>0.75 g<0.7 b>0.75'

# How long a key is held so that several frames see it, even on a slow renderer; seconds.
held=0.3

# with_one_level DATA: prints a directory that holds the same data but lists the island alone, whose places are known.
with_one_level() {
  local data part
  data=$(readlink -f "$1") || return
  mkdir -p "$scratch/data/level"
  for part in csg mesh sound teams textures level/moorholm.lev; do
    ln -sfn "$data/$part" "$scratch/data/$part"
  done
  echo "1 moorholm" >"$scratch/data/level/levels.lev"
  echo "$scratch/data"
}

# start_game GAME DATA [NAME=VALUE...]: the game on the shipped island, its window open and drawn.
start_game() {
  local game data
  game=$(readlink -f "$1")
  data=$(with_one_level "$2")
  shift 2
  : >"$scratch/log"
  cd "$data" || fail "there is no directory $data"
  start_program env BRACKENMOOR_TICK=7000 BRACKENMOOR_BOXES=yes BRACKENMOOR_LOG_FILE="$scratch/log" "$@" "$game"
  cd "$OLDPWD" || return
  await_window Brackenmoor 60
  # The worms are dropped from above the land; they have to arrive.
  sleep 2
  running "$program_pid" || fail "the game ended by itself"
}

# logged TEXT: how many lines of the log hold the text.
logged() {
  grep -cF -- "$1" "$scratch/log" || true
}

# more_logged TEXT COUNT: the log holds the text more often than that.
more_logged() {
  [ "$(logged "$1")" -gt "$2" ]
}

take_bazooka() {
  hold_key 1 $held
}

# fire SECONDS: holds the button that long.
fire() {
  xdotool mousedown 1
  sleep "$1"
  xdotool mouseup 1
}

# quit_by_escape: the game ends in order, with status 0, having taken everything down.
quit_by_escape() {
  xdotool keydown Escape
  wait_until 20 has_ended || fail "Escape does not end the game"
  xdotool keyup Escape
  await_end 1
  [ "$program_status" = 0 ] || fail "the game ends with status $program_status"
  more_logged "$end_line" 0 || fail "the game did not take its services down"
}
