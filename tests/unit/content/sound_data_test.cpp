// The shipped sounds: what a mixer and an ear ask of them.

#include "support/test_data.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>

namespace {

struct Wave {
    unsigned channels = 0;
    std::vector<double> samples; ///< of the first channel, full scale is 1

    explicit Wave(const std::string& file) {
        std::ifstream in(file, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(in), {}};
        EXPECT_GT(bytes.size(), 44u) << file;
        if (bytes.size() <= 44)
            return;
        const auto number = [&bytes](std::size_t at, std::size_t size) {
            std::uint32_t value = 0;
            std::memcpy(&value, bytes.data() + at, size);
            return value;
        };
        EXPECT_EQ(bytes.substr(0, 4) + bytes.substr(8, 8), "RIFFWAVEfmt ") << file;
        EXPECT_EQ(number(4, 4) + 8, bytes.size()) << file;
        EXPECT_EQ(number(20, 2), 1u) << file << " is not PCM";
        EXPECT_EQ(number(24, 4), 44100u) << file;
        EXPECT_EQ(number(34, 2), 16u) << file;
        EXPECT_EQ(number(40, 4) + 44, bytes.size()) << file;
        channels = number(22, 2);
        for (std::size_t at = 44; at + 2 * channels <= bytes.size(); at += 2 * channels)
            samples.push_back(static_cast<std::int16_t>(number(at, 2)) / 32768.0);
    }

    double seconds() const { return static_cast<double>(samples.size()) / 44100; }
    double peak() const {
        double most = 0;
        for (const double s : samples)
            most = std::max(most, std::fabs(s));
        return most;
    }
    double mean() const {
        double sum = 0;
        for (const double s : samples)
            sum += s;
        return sum / static_cast<double>(samples.size());
    }
    double loudness(double from, double to) const {
        double sum = 0;
        const auto first = static_cast<std::size_t>(from * static_cast<double>(samples.size()));
        const auto last = static_cast<std::size_t>(to * static_cast<double>(samples.size()));
        for (std::size_t i = first; i < last; ++i)
            sum += samples[i] * samples[i];
        return std::sqrt(sum / static_cast<double>(last - first));
    }
    /// Step from the last sample to the first, and the step that only one in a hundred exceeds.
    std::pair<double, double> seam() const {
        std::vector<double> steps;
        for (std::size_t i = 1; i < samples.size(); ++i)
            steps.push_back(std::fabs(samples[i] - samples[i - 1]));
        const auto rare = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 100 * 99);
        std::nth_element(steps.begin(), rare, steps.end());
        return {std::fabs(samples.front() - samples.back()), *rare};
    }
};

constexpr const char* loops[] = {"music/pirate1", "sfx/Walk", "sfx/ROCKETPOWERUP",
                                 "sfx/Missile",   "sfx/fuse", "sfx/bomber"};
constexpr const char* shots[] = {"sfx/Explosion1", "sfx/WORMSPRING", "sfx/ROCKETPOWERRELEASE", "sfx/ShotGunFire",
                                 "sfx/Teleport"};

std::string fileOf(const std::string& name) {
    return "sound/" + name + ".wav";
}

void expectSoundLevels(const Wave& wave, const char* name) {
    EXPECT_LE(wave.peak(), 0.9) << name;
    EXPECT_GE(wave.peak(), 0.3) << name;
    EXPECT_LT(std::fabs(wave.mean()), 0.001) << name;
}

TEST(SoundData, LoopsCloseWithoutAClick) {
    const ShippedData data;
    for (const char* const name : loops) {
        const Wave wave(fileOf(name));
        expectSoundLevels(wave, name);
        const auto [seam, rare] = wave.seam();
        EXPECT_LE(seam, rare) << name;
    }
}

TEST(SoundData, SingleSoundsStartAndEndInSilence) {
    const ShippedData data;
    for (const char* const name : shots) {
        const Wave wave(fileOf(name));
        expectSoundLevels(wave, name);
        EXPECT_LT(std::fabs(wave.samples.front()), 0.01) << name;
        EXPECT_LT(std::fabs(wave.samples.back()), 0.01) << name;
        EXPECT_GT(wave.loudness(0, 0.5), wave.loudness(0.9, 1)) << name << " does not fade";
    }
}

TEST(SoundData, MusicIsLongAndSofterThanTheEffects) {
    const ShippedData data;
    const Wave music(fileOf("music/pirate1"));
    EXPECT_GE(music.seconds(), 60.0);
    EXPECT_LT(music.loudness(0, 1), Wave(fileOf("sfx/Explosion1")).loudness(0, 0.5));
    for (double from = 0; from < 0.99; from += 0.05)
        EXPECT_GT(music.loudness(from, from + 0.05), 0.03) << "a gap at " << from;
}

TEST(SoundData, OnePullCoversTheLongestCharge) {
    const ShippedData data;
    const Wave charge(fileOf("sfx/ROCKETPOWERUP"));
    EXPECT_GE(charge.seconds(), 1.1);
    EXPECT_GT(charge.loudness(0.6, 0.9), charge.loudness(0.05, 0.3));
}

} // namespace
