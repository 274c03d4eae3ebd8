#pragma once

#include <cstdint>
#include <random>

/// The bot's own random stream, apart from the game's: the same numbers for a seed with every standard library.
class BotRandom {
public:
    explicit BotRandom(std::uint64_t seed) : engine(seed) {}

    /// 0 to limit - 1.
    unsigned below(unsigned limit) { return static_cast<unsigned>(engine() % limit); }
    /// Both included.
    int between(int low, int high) { return low + static_cast<int>(below(static_cast<unsigned>(high - low) + 1)); }
    float between(float low, float high) {
        return low + (high - low) * static_cast<float>(below(1u << 20)) / static_cast<float>(1u << 20);
    }
    /// True this many times in a thousand.
    bool perMille(unsigned chance) { return below(1000) < chance; }

private:
    std::mt19937_64 engine;
};
