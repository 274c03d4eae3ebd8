#pragma once

#include "core/scene/scene_node.h"

class Texture;

/// A small textured cube, the visible body of a grenade. The texture is that of the node's name.
class Testnode : public SceneNode {
public:
    /// Size is half the cube's edge, world units.
    Testnode(const std::string& nodeName, float halfEdge);
    ~Testnode() override;

    void draw() override;

private:
    Texture* texture;
    float size;
};
