#pragma once

#include "audio.h"

// The game's music: an original sea-song in 6/8 for a ship's band (tin whistle, concertina, plucked strings, frame drum
// and boots on the deck). Seven sections of eight bars, A A B A C B A, a little over a minute. What rings over the end
// rings on in the first bar.

/// Left and right channel of one turn of the song, the same length.
std::vector<Samples> seaSong();
