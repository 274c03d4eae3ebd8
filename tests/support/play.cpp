#include "support/play.h"

#include "game/play/weapon.h"
#include "game/play/worm.h"
#include "support/world_hash.h"

#include <algorithm>
#include <cmath>

namespace {

/// Pixels of mouse motion for one radian of aim.
constexpr float pixelsPerRadian = 200.0f;

} // namespace

Script holdKey(int virtualKey, unsigned frameCount) {
    headless::keyDown(virtualKey);
    co_await frames(frameCount);
    headless::keyUp(virtualKey);
    co_await frames(1);
}

Script takeWeapon(int index) {
    // The first frame of the key only records the selection.
    co_await holdKey('1' + index, 3);
}

Script aimAt(float pitch, float yaw) {
    const Worm* const worm = world::activeWorm();
    if (worm == nullptr)
        co_return;
    headless::moveMouse(static_cast<int>(std::lround((yaw - worm->getYaw()) * pixelsPerRadian)),
                        static_cast<int>(std::lround((pitch - worm->getPitch()) * pixelsPerRadian)));
    co_await frames(3);
}

Script pressFire(unsigned frameCount) {
    headless::leftButton(true);
    co_await frames(frameCount);
    headless::leftButton(false);
    co_await frames(1);
}

Script fire(int weapon, float pitch, unsigned frameCount, float yaw) {
    co_await takeWeapon(weapon);
    co_await aimAt(pitch, yaw);
    co_await pressFire(frameCount);
}

Script awaitNextTurn(unsigned frameLimit) {
    const Worm* const before = world::activeWorm();
    co_await until([before] { return world::activeWorm() != before; }, frameLimit);
}

Script fireBazooka(float pitch, float yaw, unsigned chargeFrames) {
    co_await takeWeapon(0);
    co_await aimAt(pitch, yaw);
    co_await pressFire(chargeFrames);
    co_await awaitNextTurn();
}

std::vector<headless::GlPrimitive> captured(const std::function<void()>& draw) {
    headless::captureGeometry(true);
    draw();
    std::vector<headless::GlPrimitive> primitives = headless::glPrimitives();
    headless::captureGeometry(false);
    return primitives;
}

std::vector<std::string> printedTexts() {
    std::vector<std::string> texts;
    for (const headless::GlRecord& record : headless::glRecords()) {
        if (record.name != "glCallLists")
            continue;
        std::string text;
        for (std::size_t i = 2; i < record.arguments.size(); ++i)
            text += static_cast<char>(record.arguments[i]);
        texts.push_back(text);
    }
    return texts;
}

bool isPrinted(const std::string& text) {
    return std::ranges::count(printedTexts(), text) > 0;
}
