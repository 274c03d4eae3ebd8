#include "platform/sdl/wave_file.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr std::size_t formatSize = 16;
constexpr unsigned pcmTag = 1;
constexpr unsigned lowestRate = 8000;
constexpr unsigned highestRate = 192000;
/// The mixer converts the whole sound at once and counts its bytes in an int.
constexpr std::size_t longestSeconds = 600;
/// What the game plays at: a sound of which no frame is left at this rate is freed twice by some releases of SDL.
constexpr std::size_t playedRate = 44100;

using Bytes = std::span<const std::uint8_t>;

/// Little-endian; the bytes must be there.
unsigned numberAt(Bytes bytes, std::size_t offset, std::size_t size) {
    unsigned value = 0;
    for (std::size_t i = 0; i < size; ++i)
        value |= static_cast<unsigned>(bytes[offset + i]) << (8 * i);
    return value;
}

bool hasTag(Bytes bytes, std::string_view tag) {
    return bytes.size() >= tag.size() && std::equal(tag.begin(), tag.end(), bytes.begin());
}

/// The format a chunk describes; none when it is not one of those taken.
std::optional<WaveFile> formatOf(Bytes chunk) {
    if (chunk.size() < formatSize)
        return std::nullopt;
    const unsigned tag = numberAt(chunk, 0, 2);
    const unsigned channels = numberAt(chunk, 2, 2);
    const unsigned rate = numberAt(chunk, 4, 4);
    const unsigned bits = numberAt(chunk, 14, 2);
    if (tag != pcmTag || channels < 1 || channels > 2 || rate < lowestRate || rate > highestRate ||
        (bits != 8 && bits != 16))
        return std::nullopt;
    return WaveFile{static_cast<int>(rate), static_cast<int>(channels), static_cast<int>(bits), {}};
}

std::size_t frameSize(const WaveFile& wave) {
    return static_cast<std::size_t>(wave.channels) * static_cast<std::size_t>(wave.bits / 8);
}

void append(std::vector<std::uint8_t>& bytes, std::string_view tag) {
    for (const char character : tag)
        bytes.push_back(static_cast<std::uint8_t>(character));
}

void append(std::vector<std::uint8_t>& bytes, std::size_t value, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i)
        bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i) & 0xFFu));
}

} // namespace

std::optional<WaveFile> readWave(Bytes bytes) {
    if (bytes.size() < 12 || !hasTag(bytes, "RIFF") || !hasTag(bytes.subspan(8), "WAVE"))
        return std::nullopt;
    std::optional<WaveFile> wave;
    Bytes rest = bytes.subspan(12);
    while (rest.size() >= 8) {
        const std::size_t promised = numberAt(rest, 4, 4);
        const Bytes chunk = rest.subspan(8, std::min(promised, rest.size() - 8));
        if (!wave && hasTag(rest, "fmt ")) {
            wave = formatOf(chunk);
            if (!wave)
                return std::nullopt;
        } else if (wave && hasTag(rest, "data")) {
            const std::size_t frames = chunk.size() / frameSize(*wave);
            const auto rate = static_cast<std::size_t>(wave->rate);
            if (frames * playedRate < rate || frames > longestSeconds * rate)
                return std::nullopt;
            wave->samples = chunk.first(frames * frameSize(*wave));
            return wave;
        }
        // Chunks start at even places.
        rest = rest.subspan(std::min(rest.size(), 8 + chunk.size() + chunk.size() % 2));
    }
    return std::nullopt;
}

std::vector<std::uint8_t> plainWaveBytes(const WaveFile& wave) {
    std::vector<std::uint8_t> bytes;
    const auto rate = static_cast<std::size_t>(wave.rate);
    // An odd chunk is padded, and the pad belongs to what surrounds it.
    const std::size_t padding = wave.samples.size() % 2;
    bytes.reserve(44 + wave.samples.size() + padding);
    append(bytes, "RIFF");
    append(bytes, 36 + wave.samples.size() + padding, 4);
    append(bytes, "WAVEfmt ");
    append(bytes, formatSize, 4);
    append(bytes, pcmTag, 2);
    append(bytes, static_cast<std::size_t>(wave.channels), 2);
    append(bytes, rate, 4);
    append(bytes, rate * frameSize(wave), 4);
    append(bytes, frameSize(wave), 2);
    append(bytes, static_cast<std::size_t>(wave.bits), 2);
    append(bytes, "data");
    append(bytes, wave.samples.size(), 4);
    bytes.insert(bytes.end(), wave.samples.begin(), wave.samples.end());
    if (padding != 0)
        bytes.push_back(0);
    return bytes;
}
