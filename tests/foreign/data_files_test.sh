#!/usr/bin/env bash
# The shipped files as programs of other people see them: a model importer opens every model and counts the same
# triangles, an image tool every texture, a sound tool every sound.
# Usage: data_files_test.sh DATA
set -euo pipefail
cd "$1"

fail() {
  echo "FAILED: $*" >&2
  exit 1
}

# u16 FILE OFFSET: the little-endian number there.
u16() {
  od -An -tu2 -j"$2" -N2 --endian=little "$1" | tr -d ' '
}

# stated FILE FIELD: a number from the importer's report.
stated() {
  assimp info "$1" --raw 2>/dev/null | sed -n "s/^$2: *\([0-9]*\).*/\1/p" | head -n 1
}

models=0
for model in mesh/*.ms3d; do
  vertices=$(u16 "$model" 14)
  triangles=$(u16 "$model" $((16 + 15 * vertices)))
  [ "$(stated "$model" Faces)" = "$triangles" ] || fail "$model: $(stated "$model" Faces) faces are read of $triangles"
  # The importer gives every corner a vertex of its own.
  [ "$(stated "$model" Vertices)" = $((3 * triangles)) ] || fail "$model: $(stated "$model" Vertices) corners are read"
  models=$((models + 1))
done
[ "$models" -ge 9 ] || fail "only $models models are there"

textures=0
for texture in textures/*.tga; do
  found=$(identify -format '%m %wx%h' "$texture") || fail "$texture is not read"
  [ "$found" = "TGA $(u16 "$texture" 12)x$(u16 "$texture" 14)" ] || fail "$texture is read as $found"
  textures=$((textures + 1))
done
[ "$textures" -ge 12 ] || fail "only $textures textures are there"

sounds=0
for sound in sound/*/*.wav; do
  [ "$(soxi -r "$sound")/$(soxi -b "$sound")" = 44100/16 ] || fail "$sound is not 44.1 kHz and 16 bit"
  sox "$sound" -n stat 2>/dev/null || fail "$sound is not read to its end"
  sounds=$((sounds + 1))
done
[ "$sounds" = 11 ] || fail "$sounds sounds are there instead of 11"
[ "$(soxi -D sound/music/pirate1.wav | cut -d. -f1)" -ge 60 ] || fail "the music is shorter than a minute"

size=$(du -sk . | cut -f1)
[ "$size" -lt 40960 ] || fail "all data together take $size KiB"
echo "$models models, $textures textures, $sounds sounds, $size KiB in all"
