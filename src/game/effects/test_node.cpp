#include "game/effects/test_node.h"

#include "core/base/log.h"
#include "core/services/module_manager.h"
#include "platform/gl.h"
#include "render/device/texture.h"
#include "render/device/texture_manager.h"

#include <array>

namespace {

/// One face of the cube: its outward normal and the directions in which s and t grow.
struct CubeFace {
    Vector3 normal;
    Vector3 s;
    Vector3 t;
};

const std::array<CubeFace, 6> cubeFaces = {{
    {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}},
    {{0, 0, -1}, {-1, 0, 0}, {0, 1, 0}},
    {{1, 0, 0}, {0, 0, -1}, {0, 1, 0}},
    {{-1, 0, 0}, {0, 0, 1}, {0, 1, 0}},
    {{0, 1, 0}, {1, 0, 0}, {0, 0, -1}},
    {{0, -1, 0}, {1, 0, 0}, {0, 0, 1}},
}};

} // namespace

Testnode::Testnode(const std::string& nodeName, float halfEdge)
    : SceneNode(nodeName), texture(theModuleManager->getTextureManager()->getTexture(nodeName)), size(halfEdge) {
    localBounds.set(Vector3(-size, -size, -size), Vector3(size, size, size));
}

Testnode::~Testnode() {
    logLine("Destruktor Testnode %s\n", name.c_str());
}

void Testnode::draw() {
    glPushMatrix();
    glMultMatrixf(worldMatrix.data());
    if (texture != nullptr)
        texture->bind();
    glBegin(GL_QUADS);
    for (const CubeFace& face : cubeFaces) {
        glNormal3f(face.normal.x, face.normal.y, face.normal.z);
        const auto corner = [&](float s, float t) {
            const Vector3 p = (face.normal + face.s * (2.0f * s - 1.0f) + face.t * (2.0f * t - 1.0f)) * size;
            glTexCoord2f(s, t);
            glVertex3f(p.x, p.y, p.z);
        };
        corner(0.0f, 0.0f);
        corner(1.0f, 0.0f);
        corner(1.0f, 1.0f);
        corner(0.0f, 1.0f);
    }
    glEnd();
    glPopMatrix();
}
