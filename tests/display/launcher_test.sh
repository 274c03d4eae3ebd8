#!/usr/bin/env bash
# The launch table: one right sentence and status for every way to start. Most rows have a game program in a tree of
# their own that only tells how it was started; those without a display have the real one.
# Usage: launcher_test.sh LAUNCHER
set -euo pipefail
# shellcheck source=tests/display/screen.sh
. "$(dirname "$0")/screen.sh"
launcher=$(readlink -f "$1")
tree=$scratch/tree
unset DISPLAY WAYLAND_DISPLAY SDL_VIDEODRIVER XDG_CONFIG_HOME XDG_DATA_HOME BRACKENMOOR_DATA
export HOME=$scratch/home TMPDIR=$scratch/tmp

# row STATUS TEXT COMMAND...: ends so within five seconds, and has said so in the first line.
row() {
  local status=0 expected=$1 text=$2
  shift 2
  timeout 5 "$@" >"$scratch/out" 2>"$scratch/err" || status=$?
  [ "$status" = "$expected" ] || fail "$* ends with $status instead of $expected"
  # Not by head: what writes to it may be ended by a broken pipe.
  awk 'NR == 1' "$scratch/out" "$scratch/err" | grep -F -- "$text" >"$scratch/first" ||
    fail "$* does not begin with \"$text\""
}

# says TEXT: in what the last row wrote.
says() {
  grep -qF -- "$1" "$scratch/out" "$scratch/err" || fail "nothing was said of \"$1\": $(cat "$scratch/out")"
}

mkdir -p "$tree/bin" "$tree/libexec" "$tree/share/games/brackenmoor/level" "$HOME" "$TMPDIR"
cp "$launcher" "$tree/bin/"
cat >"$tree/libexec/brackenmoor-game" <<'GAME'
#!/usr/bin/env bash
echo "started with $# arguments"
env | grep ^BRACKENMOOR || true
head -n 99 level/* title 2>/dev/null
pwd
exit 5
GAME
chmod +x "$tree/libexec/brackenmoor-game"
game=$tree/bin/brackenmoor
settings=$HOME/.config/brackenmoor/settings
cd /

row 3 "the game's data were not found" "$game"
for place in "$HOME/.local/share/brackenmoor" "$tree/share/games/brackenmoor" "$tree/bin/data"; do
  says "$place"
done
row 3 "were not found" "$launcher" --data "$scratch/nowhere"
row 3 "were not found" env BRACKENMOOR_DATA="$scratch/nowhere" "$launcher"
echo 2 heath moor >"$tree/share/games/brackenmoor/level/levels.lev"
echo shipped >"$tree/share/games/brackenmoor/level/heath.lev"
echo shipped >"$tree/share/games/brackenmoor/title"

row 0 "Worms, a bazooka" "$game" --help
row 0 "brackenmoor 0." "$game" --version
row 2 "--shiny" "$game" --shiny
row 2 "--music" "$game" --music 101
row 2 "--windowed" "$game" --windowed --full-screen
row 2 "but there are: heath" "$game" --level nowhere
row 1 "no display" "$launcher"
row 1 "no display" env DISPLAY=:999 "$launcher"
[ ! -e "$settings" ] || fail "settings are remembered though none were made"

row 5 "started with 0 arguments" "$game" --log some.log
says "BRACKENMOOR_LOG_FILE=/some.log"
says "$tree/share/games/brackenmoor"

# Remembered, overruled by the environment, taken back, forgotten; a broken file is kept.
row 5 started "$game" --music 40 --invert-mouse
row 5 started "$game" --windowed
says "BRACKENMOOR_MUSIC=40"
says "BRACKENMOOR_INVERT_MOUSE=1"
row 5 started env BRACKENMOOR_MUSIC=7 "$game" --plain-mouse
says "BRACKENMOOR_MUSIC=7"
says "BRACKENMOOR_INVERT_MOUSE=0"
says "BRACKENMOOR_WINDOWED=1"
row 5 started "$game" --reset
if grep -q "BRACKENMOOR_" "$scratch/out"; then fail "--reset forgets nothing"; fi
printf 'music = 5\njunk\n' >"$settings"
row 5 started "$game" --effects 30
says "$settings:2: this line is no setting"
[ "$(cat "$settings")" = "effects = 30" ] || fail "the settings are not what was chosen last"
grep -q junk "$settings.broken" || fail "the broken settings are lost"
rm -r "$HOME/.config"
touch "$HOME/.config"
row 5 started "$game" --music 3
says "cannot be remembered"
says "BRACKENMOOR_MUSIC=3"

# The player's files lie over the shipped ones, and one level can be asked for.
own=$HOME/.local/share/brackenmoor
mkdir -p "$own/level"
echo mine >"$own/title"
echo mine >"$own/level/fen.lev"
row 5 started "$game" --level fen
says mine
says "fen"
[ "$(grep -cx shipped "$scratch/out")" = 1 ] || fail "the shipped level is gone, or the shipped title is not"
if grep -qx "2 heath moor" "$scratch/out"; then fail "the shipped list is still there"; fi
[ -z "$(ls "$TMPDIR")" ] || fail "the folder of links is left behind"
row 3 "were not found" "$game" --data "$own"

# A signal goes on to the game, and a game that ends by one leaves nothing behind either.
printf '#!/usr/bin/env bash\ntrap "exit 9" TERM\necho started\nwhile sleep 0.05; do :; done\n' >"$tree/libexec/brackenmoor-game"
start_program "$game"
wait_until 5 grep -q started "$scratch/out" || fail "the game is not started"
kill -TERM "$program_pid"
await_end 5
[ "$program_status" = 9 ] || fail "the launcher ends with $program_status instead of the game's status"
printf '#!/usr/bin/env bash\nkill -SEGV $$\n' >"$tree/libexec/brackenmoor-game"
row 139 "ended by a signal" "$game"
[ -z "$(ls "$TMPDIR")" ] || fail "the folder of links is left behind"
rm "$tree/libexec/brackenmoor-game"
row 1 "the game program is missing" "$game"
