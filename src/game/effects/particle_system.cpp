#include "game/effects/particle_system.h"

#include "core/base/expect.h"
#include "core/base/log.h"
#include "core/services/module_manager.h"
#include "core/services/timer.h"
#include "platform/crt_random.h"
#include "platform/gl.h"
#include "render/device/texture_manager.h"
#include "render/view/billboard.h"

namespace {

/// Puffs closer in time than this are dropped, ms.
constexpr std::uint32_t emissionSpacing = 50;
/// How long the system outlives its last puff, ms.
constexpr std::int32_t timeout = 5000;
/// Width of the random shift of a puff on each axis, world units.
constexpr double jitter = 0.5;
/// Corner scale of a puff at the end of its life.
constexpr float fullPuffSize = 3.0f;
constexpr float boundsHalfSize = 1000.0f;

float randomJitter() {
    return static_cast<float>(jitter * (crtRandFraction() - 0.5));
}

} // namespace

ParticleSystem::ParticleSystem(const std::string& nodeName) : SceneNode(nodeName) {
    logLine("Construction Particle System");
    texture = theModuleManager->getTextureManager()->getTexture(name);
    positions.fill(Vector3(0.0f, 0.0f, 0.0f));
    life.fill(0.0f);
    lastEmitTime = theModuleManager->getTimer()->getLastTick();
    localBounds.set(Vector3(-boundsHalfSize, -boundsHalfSize, -boundsHalfSize),
                    Vector3(boundsHalfSize, boundsHalfSize, boundsHalfSize));
}

ParticleSystem::~ParticleSystem() {
    logLine("Destruction Particle System");
}

void ParticleSystem::emit(float x, float y, float z) {
    const std::uint32_t now = theModuleManager->getTimer()->getLastTick();
    if (now - lastEmitTime <= emissionSpacing)
        return;
    expect(nextSlot >= 0 && nextSlot < capacity);
    const auto slot = static_cast<std::size_t>(nextSlot);
    life[slot] = 1.0f;
    positions[slot].z = z + randomJitter();
    positions[slot].y = y + randomJitter();
    positions[slot].x = x + randomJitter();
    nextSlot = (nextSlot + 1) % capacity;
    ++emitted;
    lastEmitTime = now;
}

void ParticleSystem::update() {
    const Timer& timer = *theModuleManager->getTimer();
    for (float& left : life) {
        left -= timer.getFrameTime();
        if (!(left > 0.0f))
            left = 0.0f;
    }
    SceneNode::update();
    if (ticksBetween(lastEmitTime, timer.getLastTick()) > timeout && emitted != 0)
        theModuleManager->getSceneRoot()->deleteChild(this);
}

void ParticleSystem::draw() {
    beginBillboards(texture);
    const BillboardAxes axes = activeBillboardAxes();
    for (std::size_t i = 0; i < life.size(); ++i) {
        glColor4f(1.0f, 1.0f, 1.0f, life[i]);
        drawBillboard(axes, positions[i], (1.0f - life[i]) * fullPuffSize,
                      {Vector2(0.0f, 0.0f), Vector2(1.0f, 0.0f), Vector2(1.0f, 1.0f), Vector2(0.0f, 1.0f)});
    }
    endBillboards();
}
