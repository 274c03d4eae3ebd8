# shellcheck shell=bash
# shellcheck disable=SC2034,SC2154 # shared with those who source this
# Sourced by the display tests and the demo: a screen of their own, a program on it, real keys and a real mouse,
# pictures. Whatever was started ends with the script.

scratch=$(mktemp -d)
screen_pid=
program_pid=

clean_up() {
  [ -z "$program_pid" ] || kill -KILL "$program_pid" 2>/dev/null || true
  [ -z "$screen_pid" ] || kill "$screen_pid" 2>/dev/null || true
  rm -rf "$scratch"
}
trap clean_up EXIT

fail() {
  echo "FAILED: $*" >&2
  if [ -s "$scratch/err" ]; then
    echo "The program's stderr:" >&2
    cat "$scratch/err" >&2
  fi
  exit 1
}

# wait_until SECONDS COMMAND...: tries the command 20 times a second; false when it never succeeded.
wait_until() {
  local tries=$(($1 * 20))
  shift
  while ! "$@" >/dev/null 2>&1; do
    tries=$((tries - 1))
    [ $tries -gt 0 ] || return 1
    sleep 0.05
  done
}

# try_screen WIDTHxHEIGHT: starts a virtual screen; false when it does not answer.
try_screen() {
  : >"$scratch/display"
  # Without -noreset the server starts anew, and drops who is just connecting, whenever its last client goes.
  Xvfb -displayfd 3 -screen 0 "$1x24" -nolisten tcp -noreset 3>"$scratch/display" >"$scratch/xvfb" 2>&1 &
  screen_pid=$!
  wait_until 20 test -s "$scratch/display" || return 1
  DISPLAY=":$(tr -d '[:space:]' <"$scratch/display")"
  export DISPLAY
  wait_until 5 xdotool getdisplaygeometry
}

# open_screen [WIDTHxHEIGHT]: a virtual screen, 1024x768 by default.
open_screen() {
  local tries=3
  unset WAYLAND_DISPLAY SDL_VIDEODRIVER
  export LIBGL_ALWAYS_SOFTWARE=1 SDL_AUDIODRIVER=dummy
  # Servers that start at the same moment can take the same number, and then one of them is deaf.
  until try_screen "${1:-1024x768}"; do
    tries=$((tries - 1))
    [ $tries -gt 0 ] || fail "Xvfb does not start: $(cat "$scratch/xvfb")"
    close_screen
  done
}

close_screen() {
  kill "$screen_pid" 2>/dev/null || true
  wait "$screen_pid" 2>/dev/null || true
  screen_pid=
}

# start_program COMMAND...: its output goes to $scratch/out and $scratch/err.
start_program() {
  "$@" >"$scratch/out" 2>"$scratch/err" </dev/null &
  program_pid=$!
}

# running PID
running() {
  kill -0 "$1" 2>/dev/null
}

has_ended() {
  ! running "$program_pid"
}

# await_end SECONDS: waits for the program's end and puts its exit status into program_status.
await_end() {
  wait_until "$1" has_ended || fail "the program does not end"
  program_status=0
  wait "$program_pid" || program_status=$?
  program_pid=
}

# await_window NAME SECONDS
await_window() {
  wait_until "$2" xdotool search --onlyvisible --name "^$1\$" || fail "no window \"$1\" appears"
}

# hold_key KEY SECONDS
hold_key() {
  xdotool keydown "$1"
  sleep "$2"
  xdotool keyup "$1"
}

tap_key() {
  hold_key "$1" 0.1
}

# move_mouse DX DY
move_mouse() {
  xdotool mousemove_relative -- "$1" "$2"
}

# picture FILE: the screen as it is; .ppm is quick to write, .png small.
picture() {
  import -window root -depth 8 "$1"
}

# The pictures' figures; tools/measure_picture.cpp says how colours and regions are written. Whoever starts a script that
# asks for them says in MEASURE_PICTURE where that program is.

# colour_at FILE X Y: "red green blue", 0 to 255 each.
colour_at() {
  "$MEASURE_PICTURE" colour "$@"
}

# share FILE COLOUR [REGION]: per mille of the pixels of the picture, or of a region of it, that are of the colour.
share() {
  "$MEASURE_PICTURE" share "$@"
}

# difference FILE FILE: mean difference of two pictures, per mille of full scale.
difference() {
  "$MEASURE_PICTURE" difference "$@"
}
