#pragma once

#include "core/scene/scene_node.h"
#include "render/math/vector2.h"

#include <array>
#include <cstdint>

class Texture;

/// A square that faces the viewer and plays a sheet of 5 x 5 frames for one second, with a sound, and then removes
/// itself through the scene root. The sheet is the texture of the node's name; frame 0 lies at texture coordinate (0,
/// 0).
class Explosion : public SceneNode {
public:
    /// Size is half the side of the square, world units.
    Explosion(const std::string& nodeName, const Vector3& position, float halfSide);
    ~Explosion() override;

    void update() override;
    void draw() override;

private:
    /// Signed: the start may lie after the frame's "now".
    std::int32_t getElapsed() const;

    Vector3 centre;
    Texture* texture;
    /// System tick at construction, ms.
    std::uint32_t startTime;
    std::array<Vector2, 25> frameOrigins;
    float size;
};
