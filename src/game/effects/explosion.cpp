#include "game/effects/explosion.h"

#include "core/base/expect.h"
#include "core/base/log.h"
#include "core/services/module_manager.h"
#include "core/services/sound_control.h"
#include "core/services/timer.h"
#include "platform/gl.h"
#include "render/device/texture.h"
#include "render/device/texture_manager.h"
#include "render/view/billboard.h"

#include <algorithm>

namespace {

/// ms
constexpr std::int32_t duration = 1000;
constexpr std::int32_t frameCount = 25;
constexpr std::size_t framesPerRow = 5;
/// Side of one frame in texture coordinates.
constexpr float frameCell = 0.2f;

constexpr const char* explosionSound = "sound/sfx/Explosion1.wav";
constexpr int explosionChannel = 1;

} // namespace

Explosion::Explosion(const std::string& nodeName, const Vector3& position, float halfSide)
    : SceneNode(nodeName), centre(position), size(halfSide) {
    expect(size > 0.0f);
    for (std::size_t i = 0; i < frameOrigins.size(); ++i) {
        const std::size_t row = i / framesPerRow;
        frameOrigins[i] = Vector2(static_cast<float>(i % framesPerRow) / static_cast<float>(framesPerRow),
                                  static_cast<float>(row) / static_cast<float>(framesPerRow));
    }
    logLine("Construction Explosion");
    texture = theModuleManager->getTextureManager()->getTexture(name);
    startTime = theModuleManager->getTimer()->getTickCount();
    localBounds.set(centre - size, centre + size);
    theModuleManager->getSoundControl()->play(explosionSound, false, explosionChannel);
}

Explosion::~Explosion() {
    logLine("Destruction Explosion");
}

std::int32_t Explosion::getElapsed() const {
    return ticksBetween(startTime, theModuleManager->getTimer()->getLastTick());
}

void Explosion::update() {
    SceneNode::update();
    if (getElapsed() > duration)
        theModuleManager->getSceneRoot()->deleteChild(this);
}

void Explosion::draw() {
    // Before its start tick the explosion shows its first frame.
    const std::int32_t frame = std::clamp(getElapsed() * frameCount / duration, 0, frameCount - 1);
    const auto [u, v] = frameOrigins[static_cast<std::size_t>(frame)];
    beginBillboards(texture);
    const BillboardAxes axes = activeBillboardAxes();
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    drawBillboard(
        axes, centre, size,
        {Vector2(u + frameCell, v + frameCell), Vector2(u + frameCell, v), Vector2(u, v), Vector2(u, v + frameCell)});
    endBillboards();
}
