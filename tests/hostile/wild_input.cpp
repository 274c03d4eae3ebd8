#include "hostile/wild_input.h"

#include "platform/headless/headless.h"

#include <array>

namespace {

constexpr std::array<int, 12> playKeys{'W', 'A', 'S', 'D', VK_SPACE, 'Q', 'E', '1', '2', '3', '4', '5'};
constexpr std::array<int, 10> otherKeys{VK_F2, VK_F3, VK_F4, VK_F5, VK_F6, VK_F7, VK_F8, VK_F9, 'T', VK_RETURN};

} // namespace

void WildInput::releaseEverything() {
    for (const int key : playKeys)
        headless::keyUp(key);
    headless::leftButton(false);
}

void WildInput::chooseFrameTime(Pace pace) {
    if (burst > 0) {
        --burst;
        ++emptyFrames;
        headless::setFrameDuration(0);
        return;
    }
    unsigned length = pace == Pace::hasty ? 100 + random.below(201) : 10 + random.below(31);
    if (pace != Pace::ordinary) {
        const unsigned kind = random.below(1000);
        if (kind < 15)
            burst = 1 + random.below(30);
        else if (kind < 45)
            length = 100 + random.below(900);
        else if (kind < 55)
            length = 1000 + random.below(9001);
    }
    longFrames += length > 1000 ? 1 : 0;
    headless::setFrameDuration(length);
}

void WildInput::causeEvent() {
    const unsigned kind = random.below(1000);
    if (kind < 450)
        toggleKey();
    else if (kind < 600)
        headless::leftButton(random.perMille(500));
    else if (kind < 900)
        nudgeMouse(200);
    else if (kind < 910)
        nudgeMouse(1000000);
    else if (kind < 960)
        headless::tapKey(otherKeys[random.below(otherKeys.size())]);
    else
        causeWindowEvent();
}

void WildInput::toggleKey() {
    const int key = playKeys[random.below(playKeys.size())];
    if (random.perMille(500))
        headless::keyDown(key);
    else
        headless::keyUp(key);
}

void WildInput::nudgeMouse(int farthest) {
    const int right = random.between(-farthest, farthest);
    headless::moveMouse(right, random.between(-farthest, farthest));
}

void WildInput::resize(int largest) {
    const int width = random.between(0, largest);
    headless::resizeWindow(width, random.between(0, largest));
}

void WildInput::causeWindowEvent() {
    switch (random.below(7)) {
    case 0:
        resize(2000);
        break;
    case 1:
        resize(1);
        break;
    case 2:
        headless::post(WM_ACTIVATE, MAKEWPARAM(static_cast<WORD>(random.below(3)), 0));
        break;
    case 3:
        headless::post(WM_SYSCOMMAND, random.perMille(500) ? SC_SCREENSAVE : SC_MONITORPOWER);
        break;
    case 4:
        // Any key there is and some there are not.
        if (const int key = random.between(0, 300); key != VK_ESCAPE)
            headless::tapKey(key);
        break;
    case 5:
        headless::post(0x8000u + random.below(0x4000u), 1, 1);
        break;
    default:
        minimise();
        break;
    }
}

void WildInput::minimise() {
    ++minimisations;
    headless::minimiseWindow();
    looksWhileMinimised = 1 + random.below(5);
    headless::onIdle([this] { whileMinimised(); });
}

/// The loop turns without frames now; what comes in is still taken in.
void WildInput::whileMinimised() {
    if (--looksWhileMinimised > 0) {
        headless::advance(random.below(4000));
        toggleKey();
        headless::leftButton(random.perMille(300));
        nudgeMouse(50);
        return;
    }
    headless::restoreWindow();
    headless::onIdle(nullptr);
}
