#include "platform/sdl/wave_sound.h"

#include <SDL.h>

#include <algorithm>
#include <climits>
#include <memory>
#include <string_view>

namespace {

constexpr int lowestRate = 1'000;
constexpr int highestRate = 768'000;
constexpr Uint64 longestSeconds = 600;
constexpr Uint8 playedChannels = 2;
constexpr std::size_t playedFrameSize = 4;

/// The first chunk follows the file's own head: "RIFF", its size, "WAVE".
constexpr std::size_t firstChunk = 12;
/// A chunk's name and size.
constexpr std::size_t chunkHead = 8;

struct FreeSamples {
    void operator()(Uint8* samples) const { SDL_FreeWAV(samples); }
};

WaveSound refused(std::string why) {
    return {{}, std::move(why)};
}

bool isWave(const std::vector<std::uint8_t>& file) {
    const auto hasTag = [&](std::size_t place, std::string_view tag) {
        return std::equal(tag.begin(), tag.end(), file.begin() + static_cast<std::ptrdiff_t>(place));
    };
    return file.size() >= firstChunk && hasTag(0, "RIFF") && hasTag(8, "WAVE");
}

/// Lets no chunk promise more than is there.
void shortenPromises(std::vector<std::uint8_t>& file) {
    for (std::size_t chunk = firstChunk; chunk + chunkHead <= file.size();) {
        std::size_t promised = 0;
        for (std::size_t i = 0; i < 4; ++i)
            promised |= std::size_t{file[chunk + 4 + i]} << (8 * i);
        const std::size_t there = file.size() - chunk - chunkHead;
        if (promised > there)
            for (std::size_t i = 0; i < 4; ++i)
                file[chunk + 4 + i] = static_cast<std::uint8_t>(there >> (8 * i) & 0xFFu);
        // Chunks start at even places.
        chunk += chunkHead + std::min(promised, there) + promised % 2;
    }
}

} // namespace

WaveSound decodeWave(std::vector<std::uint8_t> file, int playedRate) {
    if (!isWave(file))
        return refused("not a WAV file");
    shortenPromises(file);

    SDL_AudioSpec spec{};
    Uint8* loaded = nullptr;
    Uint32 size = 0;
    if (SDL_LoadWAV_RW(SDL_RWFromConstMem(file.data(), static_cast<int>(file.size())), 1, &spec, &loaded, &size) ==
        nullptr)
        return refused(SDL_GetError());
    const std::unique_ptr<Uint8, FreeSamples> owned(loaded);

    const Uint32 frameSize = SDL_AUDIO_BITSIZE(spec.format) / 8u * spec.channels;
    if (spec.freq < lowestRate || spec.freq > highestRate)
        return refused(std::to_string(spec.freq) + " sample frames a second");
    const auto rate = static_cast<Uint64>(spec.freq);
    const Uint64 frames = size / frameSize;
    if (frames > longestSeconds * rate)
        return refused("longer than ten minutes");
    if (frames * static_cast<Uint64>(playedRate) < rate)
        return refused("too short to be played");

    SDL_AudioCVT conversion{};
    if (SDL_BuildAudioCVT(&conversion, spec.format, spec.channels, spec.freq, AUDIO_S16SYS, playedChannels,
                          playedRate) < 0)
        return refused(SDL_GetError());
    // The conversion counts bytes in an int.
    const Uint64 room = frames * frameSize * static_cast<Uint64>(conversion.len_mult);
    if (room > INT_MAX)
        return refused("too long to be converted");
    // Done in place, with room for its longest step.
    WaveSound sound;
    sound.samples.resize(static_cast<std::size_t>(room));
    std::copy_n(loaded, frames * frameSize, sound.samples.begin());
    conversion.buf = sound.samples.data();
    conversion.len = static_cast<int>(frames * frameSize);
    conversion.len_cvt = conversion.len;
    if (conversion.needed != 0 && SDL_ConvertAudio(&conversion) != 0)
        return refused(SDL_GetError());
    const auto converted = static_cast<std::size_t>(std::max(conversion.len_cvt, 0));
    sound.samples.resize(converted - converted % playedFrameSize);
    sound.samples.shrink_to_fit();
    if (sound.samples.empty())
        return refused("too short to be played");
    return sound;
}
