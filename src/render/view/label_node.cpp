#include "render/view/label_node.h"

#include "core/services/module_manager.h"
#include "platform/gl.h"
#include "render/camera/camera.h"
#include "render/device/texture.h"
#include "render/device/texture_manager.h"

namespace {

/// Half the side of a glyph quad and the advance from glyph to glyph, world units: neighbouring quads overlap by half.
constexpr float glyphHalfSize = 2.0f;
/// Width of one cell of the 16 x 16 glyph grid in texture coordinates.
constexpr float glyphCell = 0.0625f;
/// Width of what is sampled: slightly more than a cell, so that filtering does not cut the glyph's edge.
constexpr float sampledCell = 0.065f;

} // namespace

LabelNode::LabelNode() : SceneNode("<no name>"), texture(theModuleManager->getTextureManager()->getTexture("font")) {
    for (std::size_t code = 0; code < glyphCoords.size(); ++code)
        glyphCoords[code] =
            Vector2(static_cast<float>(code % 16) * glyphCell, static_cast<float>(code / 16) * glyphCell);
    localBounds.set(Vector3(100.0f, 100.0f, 100.0f), Vector3(-100.0f, -100.0f, -100.0f));
}

void LabelNode::draw() {
    glPushMatrix();
    glDisable(GL_LIGHTING);
    glDepthMask(GL_FALSE);

    const auto [right, up] = activeBillboardAxes();
    const float h = glyphHalfSize;
    const Vector3 lowerRight = (right - up) * h;
    const Vector3 upperRight = (up + right) * h;
    const Vector3 upperLeft = (up - right) * h;
    const Vector3 lowerLeft = (up + right) * -h;
    Vector3 p = getWorldPosition() - right * (static_cast<float>(static_cast<int>(text.size()) - 1) * h * 0.5f);

    glColor4fv(color.data());
    if (texture != nullptr)
        texture->bind();
    const auto corner = [&p](const Vector3& offset, float s, float t) {
        glTexCoord2f(s, t);
        glVertex3f(p.x + offset.x, p.y + offset.y, p.z + offset.z);
    };
    glBegin(GL_QUADS);
    for (const char character : text) {
        const auto [s, t] = glyphCoords[static_cast<unsigned char>(character)];
        corner(lowerRight, s + sampledCell, 1.0f - t - sampledCell);
        corner(upperRight, s + sampledCell, 1.0f - t);
        corner(upperLeft, s, 1.0f - t);
        corner(lowerLeft, s, 1.0f - t - sampledCell);
        p += right * h;
    }
    glEnd();

    glEnable(GL_LIGHTING);
    glDepthMask(GL_TRUE);
    glPopMatrix();
}
