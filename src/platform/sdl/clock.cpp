#include "platform/sdl/backend.h"
#include "platform/sdl/tick.h"

#include <charconv>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

std::uint64_t now() {
    return static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now().time_since_epoch()).count());
}

/// A step at which the clock stands until the first frame.
std::optional<std::uint64_t> standing;
/// Added to the steps of the system's clock; wraps below zero by design.
std::uint64_t offset = 0;
std::uint64_t lastShown = 0;

std::uint64_t currentIndex() {
    return standing ? *standing : tickIndex(now()) + offset;
}

} // namespace

void startClock() {
    const char* text = std::getenv("BRACKENMOOR_TICK");
    if (text == nullptr)
        return;
    std::uint32_t start = 0;
    if (std::from_chars(text, text + std::strlen(text), start).ec == std::errc())
        standing = tickIndexOfMilliseconds(start);
}

void waitForTick() {
    if (standing) {
        offset = *standing - tickIndex(now());
        lastShown = *standing;
        standing.reset();
    }
    while (currentIndex() == lastShown) {
        const std::uint64_t wake = tickStart(tickIndex(now()) + 1);
        std::this_thread::sleep_until(Clock::time_point(std::chrono::nanoseconds(wake)));
    }
    lastShown = currentIndex();
}

DWORD GetTickCount() {
    return tickMilliseconds(currentIndex());
}
