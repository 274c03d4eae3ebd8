#!/usr/bin/env bash
# What the game lets one hear: SDL's disk driver writes it to a file. The music plays all the time, a shot and its explosion
# are louder, and the recording is as long as the game was.
# Usage: game_sound_test.sh GAME DATA
set -euo pipefail
# shellcheck source=tests/display/screen.sh
. "$(dirname "$0")/screen.sh"
# shellcheck source=tests/display/game.sh
. "$(dirname "$0")/game.sh"

recording=$scratch/recording
# The level of every tenth of a second of it, in thousandths of full scale: 16-bit stereo at 44.1 kHz.
levels() {
  od -An -v -t d2 -w17640 "$recording" |
    awk 'NF == 8820 { sum = 0; for (i = 1; i <= NF; ++i) sum += $i * $i; print int(sqrt(sum / NF) / 32.768) }'
}
open_screen 1024x768
begin=$(date +%s%3N)
start_game "$1" "$2" SDL_AUDIODRIVER=disk SDL_DISKAUDIOFILE="$recording"
sleep 3
# Everything so far is music.
levels >"$scratch/music"
tap_key p
sleep 2
tap_key F12
take_bazooka
move_mouse 0 -60
fire 0.5
wait_until 8 more_logged "$cut_line" 0 || fail "no crater was cut"
sleep 1.5
quit_by_escape
end=$(date +%s%3N)
levels >"$scratch/all"

length=$(($(stat -c %s "$recording") * 10 / 1764))
played=$((end - begin))
if [ "$length" -lt $((played * 6 / 10)) ] || [ "$length" -gt $((played * 13 / 10)) ]; then
  fail "the recording is $length ms long, the game played for $played ms"
fi
# The music begins once the level is loaded; from then on no second of it is silent.
silent=$(awk '$1 > 0 { on = 1 } on && $1 < 2 { run++ } on && $1 >= 2 { run = 0 } run > most { most = run } END { print on ? most + 0 : 999 }' "$scratch/music")
[ "$silent" -lt 10 ] || fail "the music is silent for $silent tenths of a second"
silent=$(awk '$1 < 2 { run++ } $1 >= 2 { if (on && run > most) most = run; run = 0; on = 1 } END { print most + 0 }' "$scratch/all")
[ "$silent" -ge 14 ] || fail "the pause is silent for $silent tenths of a second only"
loudest() {
  sort -n "$1" | tail -n 1
}
music=$(loudest "$scratch/music")
blast=$(loudest "$scratch/all")
[ "$blast" -gt $((music * 5 / 4)) ] || fail "the blast (level $blast of 1000) is hardly louder than the music ($music)"
echo "music up to level $music of 1000, the blast $blast; $length ms recorded of $played ms"
