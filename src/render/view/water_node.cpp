#include "render/view/water_node.h"

#include "core/base/log.h"
#include "core/services/module_manager.h"
#include "core/services/timer.h"
#include "platform/wgl_extension.h"
#include "render/device/texture.h"
#include "render/device/texture_manager.h"

#include <cmath>
#include <numbers>

namespace {

/// How often the two layers repeat across the square.
constexpr float baseRepeats = 100.0f;
constexpr float detailRepeats = 150.0f;
/// Keeps the two layers from lying on one another.
constexpr float detailShift = 0.5f;
/// Milliseconds in which the drift's angle grows by one radian.
constexpr double driftPeriod = 10000.0;
/// Radians.
constexpr double fullTurn = 2.0 * std::numbers::pi;

} // namespace

WaterNode::WaterNode() : SceneNode("Water"), timer(theModuleManager->getTimer()) {
    logLine("Construktor Water Node\n");
    baseTexture = theModuleManager->getTextureManager()->getTexture("water");
    detailTexture = theModuleManager->getTextureManager()->getTexture("water");
    localBounds.set(Vector3(halfSize, 0.0f, halfSize), Vector3(-halfSize, 0.0f, -halfSize));
    glActiveTextureARB = getExtension<PFNGLACTIVETEXTUREARBPROC>("glActiveTextureARB");
    glMultiTexCoord2fARB = getExtension<PFNGLMULTITEXCOORD2FARBPROC>("glMultiTexCoord2fARB");
    // One without the other is of no use.
    if (glActiveTextureARB == nullptr || glMultiTexCoord2fARB == nullptr) {
        glActiveTextureARB = nullptr;
        glMultiTexCoord2fARB = nullptr;
    }
}

WaterNode::~WaterNode() {
    logLine("Destruktor Water Node\n");
}

void WaterNode::draw() {
    setMaterial();
    glPushMatrix();
    glMultMatrixf(worldMatrix.data());
    enableLayer(GL_TEXTURE0_ARB, baseTexture);
    if (glActiveTextureARB != nullptr)
        enableLayer(GL_TEXTURE1_ARB, detailTexture);

    glDepthMask(GL_FALSE);
    drawSurface();

    if (glActiveTextureARB != nullptr)
        disableLayer(GL_TEXTURE1_ARB);
    disableLayer(GL_TEXTURE0_ARB);
    glDepthMask(GL_TRUE);
    glEnable(GL_TEXTURE_2D);
    glPopMatrix();
}

void WaterNode::setMaterial() const {
    const GLfloat half[] = {0.5f, 0.5f, 0.5f, 1.0f};
    const GLfloat white[] = {1.0f, 1.0f, 1.0f, 1.0f};
    const GLfloat black[] = {0.0f, 0.0f, 0.0f, 1.0f};
    glMaterialfv(GL_FRONT, GL_AMBIENT, half);
    glMaterialfv(GL_FRONT, GL_DIFFUSE, white);
    glMaterialfv(GL_FRONT, GL_SPECULAR, black);
    glMaterialf(GL_FRONT, GL_SHININESS, 0.0f);
    glMaterialfv(GL_FRONT, GL_EMISSION, black);
}

void WaterNode::enableLayer(GLenum unit, Texture* texture) const {
    if (glActiveTextureARB != nullptr)
        glActiveTextureARB(unit);
    glEnable(GL_TEXTURE_2D);
    if (texture != nullptr)
        texture->bind();
}

void WaterNode::disableLayer(GLenum unit) const {
    if (glActiveTextureARB != nullptr)
        glActiveTextureARB(unit);
    glDisable(GL_TEXTURE_2D);
}

void WaterNode::drawSurface() const {
    // In single precision the tick itself loses its milliseconds within hours, and the sea moves in jerks.
    const auto angle = static_cast<float>(std::fmod(timer->getLastTick() / driftPeriod, fullTurn));
    const float s = std::sin(angle);
    const float c = std::cos(angle);
    const float detailS = c + detailShift;
    const float detailT = s + detailShift;
    // right and back are 0 or 1: how far along the layers' repeats a corner lies.
    const auto corner = [&](float x, float z, float right, float back) {
        if (glMultiTexCoord2fARB != nullptr) {
            glMultiTexCoord2fARB(GL_TEXTURE0_ARB, s + right * baseRepeats, c + back * baseRepeats);
            glMultiTexCoord2fARB(GL_TEXTURE1_ARB, detailS + back * detailRepeats,
                                 detailT + (1.0f - right) * detailRepeats);
        } else {
            glTexCoord2f(s + right * baseRepeats, c + back * baseRepeats);
        }
        glVertex3f(x, 0.0f, z);
    };
    glBegin(GL_QUADS);
    glNormal3f(0.0f, 1.0f, 0.0f);
    corner(-halfSize, -halfSize, 0.0f, 1.0f);
    corner(-halfSize, halfSize, 0.0f, 0.0f);
    corner(halfSize, halfSize, 1.0f, 0.0f);
    corner(halfSize, -halfSize, 1.0f, 1.0f);
    glEnd();
}
