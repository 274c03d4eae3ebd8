#pragma once

#include <cstdint>

/// The frame clock: the length of the last frame and the frame's "now". Registers itself.
class Timer {
public:
    Timer();
    ~Timer();

    /// Ends a frame: measures its length. No smoothing and no upper limit.
    void tick();
    /// Seconds that the last frame took; 0 until the first tick.
    float getFrameTime() const { return frameTime; }
    /// Milliseconds of the system tick at the last `tick`, the same all through a frame.
    std::uint32_t getLastTick() const { return lastTick; }
    /// Milliseconds of the system tick right now.
    std::uint32_t getTickCount() const;

private:
    std::uint32_t lastTick;
    float frameTime = 0.0f;
};

/// Milliseconds from one tick to a later one, right across the wrap of the 32-bit tick; negative when it is earlier.
constexpr std::int32_t ticksBetween(std::uint32_t from, std::uint32_t to) {
    return static_cast<std::int32_t>(to - from);
}
