#pragma once

// The sea: one large square at height 0 with two layers of the texture "water" that drift in different directions,
// combined by two texture units. Without the multitexture entry points it draws the first layer alone. Depth writes are
// off while it is drawn, so a translucent sea never hides what comes after it.

#include "core/scene/scene_node.h"
#include "platform/gl.h"

class Texture;
class Timer;

class WaterNode : public SceneNode {
public:
    /// Needs a current GL context.
    WaterNode();
    ~WaterNode() override;

    void draw() override;

private:
    void setMaterial() const;
    void enableLayer(GLenum unit, Texture* texture) const;
    void disableLayer(GLenum unit) const;
    void drawSurface() const;

    Texture* baseTexture;
    Texture* detailTexture;
    Timer* timer;
    PFNGLMULTITEXCOORD2FARBPROC glMultiTexCoord2fARB;
    PFNGLACTIVETEXTUREARBPROC glActiveTextureARB;
    /// World units.
    float halfSize = 3000.0f;
};
