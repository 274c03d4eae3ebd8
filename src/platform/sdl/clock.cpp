#include "platform/sdl/backend.h"
#include "platform/sdl/frame_clock.h"
#include "platform/sdl/tick.h"

#include <charconv>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

FrameClock gameClock;
/// The clock stands at a tick that was asked for until the first frame.
bool awaitsFirstFrame = false;

std::uint64_t now() {
    const auto time = std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now().time_since_epoch()).count();
    return tickIndex(static_cast<std::uint64_t>(time));
}

void sleepUntilNextStep() {
    const std::uint64_t wake = tickStart(now() + 1);
    std::this_thread::sleep_until(Clock::time_point(std::chrono::nanoseconds(wake)));
}

} // namespace

void startClock() {
    gameClock.set(now(), now());
    const char* text = std::getenv("BRACKENMOOR_TICK");
    if (text == nullptr)
        return;
    std::uint32_t start = 0;
    if (std::from_chars(text, text + std::strlen(text), start).ec != std::errc())
        return;
    gameClock.set(tickIndexOfMilliseconds(start), now());
    gameClock.stop(now());
    awaitsFirstFrame = true;
}

void stopClock() {
    gameClock.stop(now());
}

void resumeClock() {
    if (!awaitsFirstFrame)
        gameClock.start(now());
}

void updateClock() {
    if (backend().window.minimised || backend().pause == Pause::on)
        stopClock();
    else
        resumeClock();
}

void waitForTick() {
    if (awaitsFirstFrame) {
        awaitsFirstFrame = false;
        gameClock.start(now());
    }
    // A standing clock never moves on: whoever draws all the same is only slowed down.
    if (gameClock.isStanding())
        sleepUntilNextStep();
    while (!gameClock.isStanding() && gameClock.read(now()) == gameClock.lastFrame())
        sleepUntilNextStep();
    gameClock.endFrame(now());
}

DWORD GetTickCount() {
    return tickMilliseconds(gameClock.read(now()));
}
