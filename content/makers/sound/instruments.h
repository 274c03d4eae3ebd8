#pragma once

#include "audio.h"

// The ship's band. Every function plays one note (or one stroke) of an instrument and returns it with its tail; level
// is how hard it is played, 0 to 1, which changes the tone as well as the loudness. The seed makes each note a little
// different.

/// A note's frequency in Hz; 69 is the A of 440 Hz, one step is a semitone.
double noteHertz(int note);

/// Tin whistle: a breathy tone that scoops up to pitch and wavers when held. A cut is the quick higher grace note of
/// the style.
Samples whistleNote(int note, double seconds, double level, bool cut, std::uint64_t seed);
/// Concertina: two free reeds slightly apart, pressed in and let go.
Samples concertinaNote(int note, double seconds, double level, std::uint64_t seed);
/// A plucked wire string that rings until seconds are over. bright is 0 (bass, thumb) to 1 (plectrum).
Samples pluckedNote(int note, double seconds, double level, double bright, std::uint64_t seed);
/// Frame drum: low is the fist in the middle, otherwise a tap near the rim.
Samples drumStroke(bool low, double level, std::uint64_t seed);
/// A shaken box of dried peas.
Samples shakerStroke(double level, std::uint64_t seed);
/// A boot on the deck with a clink of the buckle.
Samples stompStroke(double level, std::uint64_t seed);
