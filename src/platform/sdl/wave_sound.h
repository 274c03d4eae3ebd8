#pragma once

// WAV files, decoded by SDL into what the mixer plays: 16 bit samples of two channels.
//
// What SDL's loader takes is taken: PCM of 8 to 32 bits, floats, ADPCM, A-law and mu-law, up to eight channels. Refused
// are beside that sounds of less than 1,000 or more than 768,000 sample frames a second, of more than ten minutes, and
// those of which no frame is left at the rate that is played: the mixer counts in an int, and some releases of SDL free
// an empty sound twice.
//
// A chunk that promises more than the file has counts as what is there: programs that write into a pipe promise
// gigabytes, and the loader would ask for as much memory. A RIFF file is asked for in the first bytes, or the library
// would try to make sense of anything else.

#include <cstdint>
#include <string>
#include <vector>

/// A sound for the mixer, or why there is none.
struct WaveSound {
    /// Whole frames of two samples of 16 bits in this machine's byte order.
    std::vector<std::uint8_t> samples;
    /// Empty when the sound is there.
    std::string fault;
};

/// Decodes the bytes of a file to this many frames a second.
WaveSound decodeWave(std::vector<std::uint8_t> file, int playedRate);
