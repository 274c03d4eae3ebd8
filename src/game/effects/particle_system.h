#pragma once

#include "core/scene/scene_node.h"

#include <array>
#include <cstdint>

class Texture;

/// A ring of puffs that face the viewer; each grows and fades out over one second. Puffs lie in world coordinates, the
/// node stays at the origin. Fed from outside, the system removes itself through the scene root five seconds after the
/// last puff; one that never had any stays. The texture is that of the node's name.
class ParticleSystem : public SceneNode {
public:
    static constexpr std::int32_t capacity = 200;

    explicit ParticleSystem(const std::string& nodeName);
    ~ParticleSystem() override;

    /// Adds a puff, unless the last one is too recent.
    void emit(float x, float y, float z);
    void update() override;
    void draw() override;

    std::int32_t getEmitted() const { return emitted; }

private:
    std::array<Vector3, capacity> positions;
    /// 1 at birth, falling to 0 by seconds.
    std::array<float, capacity> life;
    Texture* texture;
    /// Tick of the last puff, ms.
    std::uint32_t lastEmitTime;
    std::int32_t emitted = 0;
    std::int32_t nextSlot = 0;
};
