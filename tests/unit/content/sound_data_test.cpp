// The shipped sounds: what a mixer and an ear ask of them.

#include "core/base/file_access.h"
#include "support/test_data.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <set>

namespace {

struct Wave {
    std::vector<double> samples; ///< of the first channel, full scale is 1

    explicit Wave(const std::string& name) {
        std::string bytes;
        EXPECT_TRUE(readWholeFile("sound/" + name + ".wav", bytes)) << name;
        bytes.resize(std::max<std::size_t>(bytes.size(), 44));
        const auto number = [&bytes](std::size_t at, std::size_t size) {
            std::uint32_t value = 0;
            std::memcpy(&value, bytes.data() + at, size);
            return value;
        };
        EXPECT_EQ(bytes.substr(0, 4) + bytes.substr(8, 8), "RIFFWAVEfmt ") << name;
        const std::size_t channels = number(22, 2);
        const std::size_t fields[][3] = {{4, 4, bytes.size() - 8},      {20, 2, 1},  {24, 4, 44100},
                                         {28, 4, 44100 * 2 * channels}, {34, 2, 16}, {40, 4, bytes.size() - 44}};
        for (const auto& [at, size, expected] : fields)
            EXPECT_EQ(number(at, size), expected) << name << " at " << at;
        for (std::size_t at = 44; at + 2 <= bytes.size(); at += 2 * channels)
            samples.push_back(static_cast<std::int16_t>(number(at, 2)) / 32768.0);
    }

    /// Of a stretch given by shares of the whole.
    double loudness(double from, double to) const {
        const auto at = [this](double share) {
            return samples.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(samples.size()));
        };
        return std::sqrt(std::inner_product(at(from), at(to), at(from), 0.0) / static_cast<double>(at(to) - at(from)));
    }
    /// What is left under some 400 Hz.
    Wave lowPart() const {
        constexpr std::size_t width = 110;
        Wave low = *this;
        for (std::size_t i = width; i < samples.size(); ++i)
            low.samples[i] = std::accumulate(&samples[i - width], &samples[i], 0.0) / width;
        return low;
    }
};

TEST(SoundData, LoopsCloseAndSingleSoundsFade) {
    const ShippedData data;
    const std::set<std::string> loops{"music/pirate1", "sfx/Walk", "sfx/ROCKETPOWERUP",
                                      "sfx/Missile",   "sfx/fuse", "sfx/bomber"};
    std::set<std::string> all{"sfx/Explosion1", "sfx/WORMSPRING", "sfx/ShotGunFire", "sfx/Teleport",
                              "sfx/ROCKETPOWERRELEASE"};
    all.insert(loops.begin(), loops.end());
    for (const std::string& name : all) {
        SCOPED_TRACE(name);
        const Wave wave(name);
        const auto [low, high] = std::minmax_element(wave.samples.begin(), wave.samples.end());
        const double peak = std::max(-*low, *high);
        EXPECT_TRUE(peak >= 0.3 && peak <= 0.9) << peak;
        const double sum = std::accumulate(wave.samples.begin(), wave.samples.end(), 0.0);
        EXPECT_LT(std::fabs(sum / static_cast<double>(wave.samples.size())), 0.001);
        const double first = wave.samples.front();
        const double last = wave.samples.back();
        if (!loops.contains(name)) {
            EXPECT_LT(std::max(std::fabs(first), std::fabs(last)), 0.01);
            EXPECT_GT(wave.loudness(0, 0.5), wave.loudness(0.9, 1)) << "it does not fade";
            continue;
        }
        std::vector<double> steps;
        for (std::size_t i = 1; i < wave.samples.size(); ++i)
            steps.push_back(std::fabs(wave.samples[i] - wave.samples[i - 1]));
        const auto rare = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 100 * 99);
        std::nth_element(steps.begin(), rare, steps.end());
        EXPECT_LE(std::fabs(first - last), *rare) << "its seam clicks: only one step in a hundred is as large";
    }
}

TEST(SoundData, MusicIsLongAndSoftAndTheChargeRisesForAsLongAsItCan) {
    const ShippedData data;
    const Wave music("music/pirate1");
    EXPECT_GE(music.samples.size(), 60u * 44100u);
    EXPECT_LT(music.loudness(0, 1), Wave("sfx/Explosion1").loudness(0, 0.5));
    for (double from = 0; from < 0.99; from += 0.05)
        EXPECT_GT(music.loudness(from, std::min(from + 0.05, 1.0)), 0.03) << "a gap at " << from;
    const Wave charge("sfx/ROCKETPOWERUP");
    EXPECT_GE(charge.samples.size(), 1.1 * 44100);
    EXPECT_GT(charge.loudness(0.6, 0.9), charge.loudness(0.05, 0.3));
    const Wave low = charge.lowPart();
    EXPECT_GT(low.loudness(0.05, 0.3) / charge.loudness(0.05, 0.3),
              2.0 * low.loudness(0.6, 0.9) / charge.loudness(0.6, 0.9))
        << "its tone does not rise";
}

} // namespace
