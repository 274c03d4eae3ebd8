#include "core/services/timer.h"

#include "core/base/log.h"
#include "core/services/module_manager.h"
#include "platform/win32.h"

Timer::Timer() : lastTick(GetTickCount()) {
    logLine("Timer Konstruktor\n");
    theModuleManager->setTimer(this);
}

Timer::~Timer() {
    logLine("Timer Destruktor\n");
}

void Timer::tick() {
    const std::uint32_t now = GetTickCount();
    const std::int32_t delta = ticksBetween(lastTick, now);
    lastTick = now;
    frameTime = static_cast<float>(delta / 1000.0);
}

std::uint32_t Timer::getTickCount() const {
    return GetTickCount();
}
