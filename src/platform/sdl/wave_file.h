#pragma once

// Reads WAV files, so that the sound library, which also tries to make sense of anything else, sees none but good ones.
//
// Taken are 8 and 16 bit PCM in one or two channels at 8000 to 192000 Hz, ten minutes at the most. The first format
// chunk and the first data chunk after it count, others are skipped; data that break off are taken up to the last whole
// sample frame. Everything else is refused as a whole: a file that is no RIFF WAVE, lacks one of the two chunks or has
// no sample frame, or none that is left at the rate the game plays at.

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

/// A sound as a file holds it.
struct WaveFile {
    int rate = 0; ///< sample frames a second
    int channels = 0;
    int bits = 0; ///< of a sample
    /// Whole sample frames, part of what was read from.
    std::span<const std::uint8_t> samples;
};

std::optional<WaveFile> readWave(std::span<const std::uint8_t> bytes);

/// The bytes of a file with nothing but the two chunks.
std::vector<std::uint8_t> plainWaveBytes(const WaveFile& wave);
