#pragma once

// The clock that the game plays by, in steps of the system tick (tick.h): the system's clock without the time in which
// the game could not run.
//
// It stands while it is told to. A gap of more than a quarter of a second between two frames, as when the process was
// stopped, the machine slept or a level was loaded, counts as one step, or as many as have been read in it already: the
// clock never runs backwards. All times are steps of a monotonic clock, given by the caller.

#include <cstdint>

class FrameClock {
public:
    /// Shows this step from now on.
    void set(std::uint64_t step, std::uint64_t now);
    /// The step it shows.
    std::uint64_t read(std::uint64_t now);
    /// The step it showed at the last `endFrame`.
    std::uint64_t lastFrame() const { return frame; }
    void endFrame(std::uint64_t now);

    void stop(std::uint64_t now);
    void start(std::uint64_t now);
    bool isStanding() const { return standing; }

private:
    /// What it showed at the last frame or start, and when that was.
    std::uint64_t base = 0;
    std::uint64_t baseTime = 0;
    std::uint64_t frame = 0;
    std::uint64_t shown = 0;
    bool standing = false;
};
