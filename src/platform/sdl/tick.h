#pragma once

// The system tick: 64 steps a second, told in whole milliseconds, so a step is 15 or 16 ms. Times are nanoseconds of
// a monotonic clock.

#include <cstdint>

/// Number of the step that the time falls into.
std::uint64_t tickIndex(std::uint64_t nanoseconds);

/// First nanosecond of the step.
std::uint64_t tickStart(std::uint64_t index);

/// Milliseconds at the start of the step, cut to 32 bits.
std::uint32_t tickMilliseconds(std::uint64_t index);

/// First step that starts at this millisecond or later.
std::uint64_t tickIndexOfMilliseconds(std::uint32_t milliseconds);
