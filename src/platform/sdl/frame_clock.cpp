#include "platform/sdl/frame_clock.h"

#include <algorithm>

namespace {

/// Steps; a quarter of a second. Shorter, and slow machines play in slow motion; longer, and shots jump.
constexpr std::uint64_t longestGap = 16;

} // namespace

void FrameClock::set(std::uint64_t step, std::uint64_t now) {
    base = frame = shown = step;
    baseTime = now;
}

std::uint64_t FrameClock::read(std::uint64_t now) {
    if (standing)
        return shown;
    const std::uint64_t gap = now - baseTime;
    shown = std::max(shown, base + (gap > longestGap ? 1 : gap));
    return shown;
}

void FrameClock::endFrame(std::uint64_t now) {
    base = frame = read(now);
    baseTime = now;
}

void FrameClock::stop(std::uint64_t now) {
    read(now);
    standing = true;
}

void FrameClock::start(std::uint64_t now) {
    if (!standing)
        return;
    standing = false;
    base = shown;
    baseTime = now;
}
