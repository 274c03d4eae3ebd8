#!/usr/bin/env bash
# Without a display the program says so in one sentence and ends; it does not run unseen.
# Usage: no_display_test.sh PROGRAM [probe]   (with "probe" the program tells its frames, as window_probe does)
set -euo pipefail
# shellcheck source=tests/display/screen.sh
. "$(dirname "$0")/screen.sh"
unset DISPLAY WAYLAND_DISPLAY SDL_VIDEODRIVER

start_program "$1"
await_end 10
[ "$program_status" != 0 ] || fail "the program ends with status 0"
[ "$(wc -l <"$scratch/err")" = 1 ] || fail "stderr has more or less than one line"
grep -q 'no display' "$scratch/err" || fail "the sentence does not name what is missing"

SDL_VIDEODRIVER=nonsense start_program "$1"
await_end 10
[ "$program_status" != 0 ] || fail "a driver that does not exist gives status 0"
grep -q 'nonsense' "$scratch/err" || fail "the sentence does not name the driver"

[ "${2:-}" = probe ] || exit 0
# Whoever asks for a driver without a display gets it.
SDL_VIDEODRIVER=offscreen SDL_AUDIODRIVER=dummy start_program "$1"
wait_until 10 grep -q '^frame 5 ' "$scratch/out" || fail "no frames on the offscreen driver"
kill -TERM "$program_pid"
await_end 10
[ "$program_status" = 7 ] || fail "the offscreen program ends with status $program_status"
