#include "render/view/font.h"

#include "core/base/expect.h"
#include "core/services/module_manager.h"
#include "platform/gl.h"
#include "render/device/renderer.h"
#include "render/device/texture.h"
#include "render/device/texture_manager.h"

#include <algorithm>

namespace {

/// The screen for which sizes are given, pixels.
constexpr float referenceWidth = 1024.0f;
constexpr float referenceHeight = 768.0f;
/// Side of a glyph's quad and its advance at size 1, pixels: quads overlap by half.
constexpr float quadSide = 16.0f;
constexpr float quadAdvance = 8.0f;
constexpr unsigned glyphCount = 256;
constexpr unsigned glyphsPerRow = 16;
/// Side of a glyph's cell in texture coordinates.
constexpr float glyphCell = 1.0f / 16.0f;

} // namespace

Font::Font(const std::string& textureName, float sizeFactor) {
    expect(sizeFactor > 0.0f);
    Renderer* const renderer = theModuleManager->getRenderer();
    screenWidth = renderer->getWidth();
    screenHeight = renderer->getHeight();
    screenScale = std::min(screenWidth / referenceWidth, screenHeight / referenceHeight);
    size = screenScale * sizeFactor;
    advance = quadAdvance * size / screenWidth;
    texture = theModuleManager->getTextureManager()->getTexture(textureName);
    build(sizeFactor);
}

Font::~Font() {
    glDeleteLists(listBase, static_cast<GLsizei>(glyphCount));
}

void Font::build(float glyphSize) {
    listBase = glGenLists(static_cast<GLsizei>(glyphCount));
    const float side = quadSide * glyphSize;
    for (unsigned code = 0; code < glyphCount; ++code) {
        const float s0 = static_cast<float>(code % glyphsPerRow) * glyphCell;
        const float s1 = s0 + glyphCell;
        const float t0 = 1.0f - static_cast<float>(code / glyphsPerRow) * glyphCell - glyphCell;
        const float t1 = t0 + glyphCell;
        glNewList(listBase + code, GL_COMPILE);
        glBegin(GL_QUADS);
        glTexCoord2f(s0, t0);
        glVertex2f(0.0f, 0.0f);
        glTexCoord2f(s1, t0);
        glVertex2f(side, 0.0f);
        glTexCoord2f(s1, t1);
        glVertex2f(side, side);
        glTexCoord2f(s0, t1);
        glVertex2f(0.0f, side);
        glEnd();
        glTranslatef(quadAdvance * glyphSize, 0.0f, 0.0f);
        glEndList();
    }
}

void Font::print(float x, float y, const std::string& text) {
    if (texture != nullptr)
        texture->bind();
    glColor4fv(color.data());
    glDisable(GL_LIGHTING);
    glDisable(GL_DEPTH_TEST);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glOrtho(0.0, static_cast<double>(screenWidth), 0.0, static_cast<double>(screenHeight), -1.0, 1.0);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
    glTranslatef(x * screenWidth, y * screenHeight, 0.01f);
    glListBase(listBase);
    // Up to the first zero byte, as the bytes of a C string.
    glCallLists(static_cast<GLsizei>(std::min(text.find('\0'), text.size())), GL_UNSIGNED_BYTE, text.data());
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopMatrix();
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_LIGHTING);
}

void Font::print(float x, float y, const std::string& text, TextAlignment alignment) {
    const float width = static_cast<float>(text.size()) * advance;
    switch (alignment) {
    case TextAlignment::left:
        print(x, y, text);
        break;
    case TextAlignment::right:
        print(x - width, y, text);
        break;
    case TextAlignment::centre:
        print(x - width * 0.5f, y, text);
        break;
    }
}
