#!/usr/bin/env bash
# The desktop layer by itself, through window_probe: keys, mouse, frames, focus, the scaled picture, the ends.
# Usage: window_layer_test.sh PROBE
set -euo pipefail
# shellcheck source=tests/display/screen.sh
. "$(dirname "$0")/screen.sh"
probe=$1

said() {
  grep -qx "$1" "$scratch/out"
}

expect() {
  wait_until 5 said "$1" || fail "the probe never said \"$1\", but: $(grep -v frame "$scratch/out" | tr '\n' ';')"
}

# Every frame takes whole steps of 15 or 16 ms, and none takes no time.
frames_are_paced() {
  awk '$1 == "frame" && $2 > 0 { ++n; if ($3 < 15) bad = 1; if ($3 == 15 || $3 == 16) ++single }
       END { exit bad || n < 50 || single < n / 2 }' "$scratch/out"
}

open_screen 1024x768
start_program "$probe"
await_window "Window probe" 20
expect "activate 1 0"
sleep 1.5
frames_are_paced || fail "frames are not paced by the tick: $(grep frame "$scratch/out" | tr '\n' ';')"

# Or an input method that composes would keep the letters for itself.
expect "textinput 0 0"
tap_key w
expect "down 87 0"
expect "up 87 0"
tap_key 1
expect "up 49 0"
tap_key F10
expect "sysdown 121 0"
xdotool keydown alt keydown a keyup alt keyup a
expect "sysdown 65 0"
# An arrow key and the letter that means the same are one key to the program.
xdotool keydown Up keydown w keyup Up
tap_key KP_2
expect "up 50 0"
[ "$(grep -cx 'up 87 0' "$scratch/out")" = 1 ] || fail "a key goes up while its twin is held"
xdotool keyup w
if said "down 65 0" || said "down 121 0"; then fail "system keys reach the game as plain keys"; fi

move_mouse 40 0
expect "move 40 0"
move_mouse -10 25
expect "move -10 25"
move_mouse 3000 -3000
expect "move 3000 -3000"
tap_key F5
expect "up 116 0"
if said "button 1 0" || said "move 123 0"; then fail "a touch screen is taken for a mouse"; fi
xdotool mousedown 1
expect "button 1 0"
picture "$scratch/full.ppm"
[ "$(colour_at "$scratch/full.ppm" 2 2)" = "255 0 0" ] || fail "the left half is not red"
[ "$(colour_at "$scratch/full.ppm" 1021 765)" = "0 255 0" ] || fail "the right half is not green"
[ "$(colour_at "$scratch/full.ppm" 512 384)" = "0 0 255" ] || fail "the middle is not blue"

# The pause: time stands, hardly any work is done, and neither the keys nor the mouse reach the program.
ticks_of_work() {
  awk '{ print $14 + $15 }' "/proc/$program_pid/stat"
}
tick_when() {
  awk -v active="$1" '$1 == "tick" && $2 == active { tick = $3 } END { print tick }' "$scratch/out"
}
for key in Pause p F1; do
  xdotool keydown s
  tap_key $key
  wait_until 5 eval "grep '^activate' '$scratch/out' | tail -n 1 | grep -q ' 0 0'" || fail "$key does not pause"
  sleep 0.3
  work=$(ticks_of_work)
  said_before=$(wc -l <"$scratch/out")
  move_mouse 50 50
  xdotool keyup s mouseup 1
  sleep 3
  picture "$scratch/paused.ppm"
  [ "$(($(ticks_of_work) - work))" -le 9 ] || fail "the pause takes more than 3 % of a processor"
  [ "$(wc -l <"$scratch/out")" = "$said_before" ] || fail "the paused program hears of $(tail -n 1 "$scratch/out")"
  [ "$(colour_at "$scratch/paused.ppm" 2 2 | cut -d" " -f1)" -lt 100 ] || fail "the paused picture is not dimmed"
  [ "$(share "$scratch/paused.ppm" 'r>0.5 g>0.5 b>0.5')" -ge 3 ] || fail "there is no text over the paused picture"
  hold_key Escape 0.6
  wait_until 5 eval "grep '^activate' '$scratch/out' | tail -n 1 | grep -q ' 1 0'" || fail "a key does not end the pause"
  [ $(($(tick_when 1) - $(tick_when 0))) -le 64 ] || fail "the tick goes on in the pause: $(grep -A1 activate "$scratch/out" | tr "\n" ";")"
done
if said "down 80 0" || said "down 112 0"; then fail "the key of the pause reaches the program"; fi
said "down 27 0" && fail "the key that ends the pause reaches the program"

# A second window takes the keyboard while a key and the button are down.
xdotool keydown s
expect "down 83 0"
first=$(xdotool search --onlyvisible --name '^Window probe$')
"$probe" >"$scratch/second" 2>&1 </dev/null &
second_pid=$!
expect "up 83 0"
expect "button 0 0"
expect "activate 0 0"
xdotool keyup s mouseup 1
wait_until 5 grep -q '^activate 1' "$scratch/second" || fail "the second window never became active"
xdotool key Escape
wait_until 5 eval "! running $second_pid" || fail "the second window does not close"
said "down 27 0" && fail "a key for another window reached this one"
seen=$(grep -cx 'activate 1 0' "$scratch/out")
xdotool windowfocus "$first"
sleep 0.3
tap_key F12
wait_until 5 eval "[ \$(grep -cx 'activate 1 0' $scratch/out) -gt $seen ]" || fail "the window does not come back"
move_mouse 17 0
expect "move 17 0"

# Time in which the program cannot run does not count: it is stopped, and its window is taken from the screen.
no_frame_is_long() {
  awk '$1 == "frame" && $3 > 250 { exit 1 }' "$scratch/out" || fail "$1: $(grep frame "$scratch/out" | tail -n 1)"
}
kill -STOP "$program_pid"
sleep 1
kill -CONT "$program_pid"
sleep 0.3
no_frame_is_long "the time in which the program was stopped is one frame"
xdotool windowunmap "$first"
wait_until 5 grep -q '^activate [01] 1' "$scratch/out" || fail "the window does not hear that it is minimised"
sleep 1
xdotool windowmap "$first"
wait_until 5 eval "grep '^activate' $scratch/out | tail -n 1 | grep -q ' 0$'" || fail "the window does not hear that it is back"
sleep 0.3
no_frame_is_long "the time in which the window was minimised is one frame"
xdotool windowfocus "$first"
sleep 0.3
tap_key F12
sleep 0.3

xdotool key Escape
await_end 10
[ "$program_status" = 0 ] || fail "Escape ends the program with status $program_status"

start_program "$probe"
await_window "Window probe" 20
expect "activate 1 0"
kill -TERM "$program_pid"
await_end 10
[ "$program_status" = 7 ] || fail "a wish to close ends the program with status $program_status instead of its quit code"
close_screen

# A screen of other proportions shows the whole picture in its middle.
open_screen 1280x800
start_program "$probe"
await_window "Window probe" 20
expect "activate 1 0"
sleep 0.5
wide_picture_is_whole() {
  picture "$scratch/wide.ppm"
  [ "$(colour_at "$scratch/wide.ppm" 50 400)" = "0 0 0" ] || fail "there is no bar at the left"
  [ "$(colour_at "$scratch/wide.ppm" 1240 400)" = "0 0 0" ] || fail "there is no bar at the right"
  [ "$(colour_at "$scratch/wide.ppm" 120 3)" = "255 0 0" ] || fail "the picture's left half is not in place"
  [ "$(colour_at "$scratch/wide.ppm" 1160 797)" = "0 255 0" ] || fail "the picture's right half is not in place"
  [ "$(colour_at "$scratch/wide.ppm" 640 400)" = "0 0 255" ] || fail "the picture's middle is not in place"
}
wide_picture_is_whole
# In a window of the size asked for, and back; only the second switch is by the other keys.
tap_key F11
sleep 0.5
picture "$scratch/windowed.ppm"
[ "$(colour_at "$scratch/windowed.ppm" 120 400)" = "0 0 0" ] || fail "F11 leaves the picture as wide as the screen"
[ "$(colour_at "$scratch/windowed.ppm" 140 400)" = "255 0 0" ] || fail "the window does not show its left edge"
[ "$(colour_at "$scratch/windowed.ppm" 1140 400)" = "0 255 0" ] || fail "the window does not show its right edge"
xdotool keydown alt key Return keyup alt
sleep 0.5
wide_picture_is_whole
if said "down 122 0" || said "sysdown 13 0"; then fail "the keys of the switch reach the program"; fi
xdotool key Escape
await_end 10
close_screen
