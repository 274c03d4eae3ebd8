#include "platform/sdl/tick.h"

namespace {

constexpr std::uint64_t stepsPerSecond = 64;
constexpr std::uint64_t nanosecondsPerStep = 1000000000 / stepsPerSecond;
static_assert(nanosecondsPerStep * stepsPerSecond == 1000000000, "the steps must not drift against the clock");

} // namespace

std::uint64_t tickIndex(std::uint64_t nanoseconds) {
    return nanoseconds / nanosecondsPerStep;
}

std::uint64_t tickStart(std::uint64_t index) {
    return index * nanosecondsPerStep;
}

std::uint32_t tickMilliseconds(std::uint64_t index) {
    return static_cast<std::uint32_t>(index * 1000 / stepsPerSecond);
}

std::uint64_t tickIndexOfMilliseconds(std::uint32_t milliseconds) {
    return (milliseconds * stepsPerSecond + 999) / 1000;
}
