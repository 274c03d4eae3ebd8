#include "platform/sdl/overlay.h"

#include "platform/gl.h"

#include <SDL.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <vector>

namespace {

#include "overlay_font.inc"

constexpr int pictureWidth = 1024;
constexpr int pictureHeight = 768;

// A pixel of margin around each cell keeps its neighbours out of it.
constexpr int sheetSide = 512;
constexpr int pitchAcross = cellWidth + 2;
constexpr int pitchDown = cellHeight + 2;
constexpr int cellsAcross = sheetSide / pitchAcross;
static_assert(std::size(fontCodes) <= std::size_t{cellsAcross} * (sheetSide / pitchDown));

constexpr std::array<GLenum, 3> matrixModes = {GL_TEXTURE, GL_PROJECTION, GL_MODELVIEW};
constexpr std::array<GLenum, 11> switchedOff = {GL_DEPTH_TEST,    GL_LIGHTING,       GL_FOG,          GL_CULL_FACE,
                                                GL_ALPHA_TEST,    GL_SCISSOR_TEST,   GL_STENCIL_TEST, GL_TEXTURE_GEN_S,
                                                GL_TEXTURE_GEN_T, GL_COLOR_LOGIC_OP, GL_TEXTURE_2D};

/// Textures of other sides than powers of two are younger than the GL asked for.
int powerOfTwo(int least) {
    int side = 1;
    while (side < least)
        side *= 2;
    return side;
}

unsigned int makeTexture() {
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    return texture;
}

/// One texture unit, as the game starts with.
void useFirstUnit() {
    if (SDL_GL_ExtensionSupported("GL_ARB_multitexture") != SDL_TRUE)
        return;
    const auto activate = reinterpret_cast<PFNGLACTIVETEXTUREARBPROC>(SDL_GL_GetProcAddress("glActiveTextureARB"));
    activate(GL_TEXTURE1_ARB);
    glDisable(GL_TEXTURE_2D);
    activate(GL_TEXTURE0_ARB);
}

void drawQuad(float x, float y, float width, float height, const std::array<float, 4>& part) {
    glBegin(GL_QUADS);
    glTexCoord2f(part[0], part[1]);
    glVertex2f(x, y);
    glTexCoord2f(part[2], part[1]);
    glVertex2f(x + width, y);
    glTexCoord2f(part[2], part[3]);
    glVertex2f(x + width, y + height);
    glTexCoord2f(part[0], part[3]);
    glVertex2f(x, y + height);
    glEnd();
}

/// Takes one character of UTF-8 off the front; what is none counts as itself.
char32_t takeCode(std::string_view& text) {
    const auto first = static_cast<unsigned char>(text.front());
    text.remove_prefix(1);
    const int more = first >= 0xE0 ? 2 : first >= 0xC0 ? 1 : 0;
    char32_t code = more == 2 ? first & 0x0Fu : more == 1 ? first & 0x1Fu : first;
    for (int i = 0; i < more && !text.empty(); ++i) {
        code = code << 6 | (static_cast<unsigned char>(text.front()) & 0x3Fu);
        text.remove_prefix(1);
    }
    return code;
}

/// Where a character's cell is in the sheet, as texture coordinates; false when there is none.
bool findCell(char32_t code, std::array<float, 4>& part) {
    const auto* const found = std::lower_bound(std::begin(fontCodes), std::end(fontCodes), code);
    if (found == std::end(fontCodes) || *found != code)
        return false;
    const auto index = static_cast<int>(found - std::begin(fontCodes));
    const int column = index % cellsAcross * pitchAcross + 1;
    const int row = index / cellsAcross * pitchDown + 1;
    const auto coordinate = [](int pixel) { return static_cast<float>(pixel) / sheetSide; };
    part = {coordinate(column), coordinate(row), coordinate(column + cellWidth), coordinate(row + cellHeight)};
    return true;
}

std::vector<unsigned char> sheetPixels() {
    std::vector<unsigned char> pixels(std::size_t{sheetSide} * sheetSide, 0);
    for (std::size_t i = 0; i < std::size(fontCodes); ++i)
        for (std::size_t y = 0; y < cellHeight; ++y)
            std::copy_n(&fontCells[(i * cellHeight + y) * cellWidth], cellWidth,
                        &pixels[(i / cellsAcross * pitchDown + 1 + y) * sheetSide + i % cellsAcross * pitchAcross + 1]);
    return pixels;
}

int lengthOf(std::string_view text) {
    int length = 0;
    for (; !text.empty(); ++length)
        takeCode(text);
    return length;
}

/// Pixels of the screen from here on, y downwards, of a picture of this size.
void useCoordinates(const Letterbox& box, int width, int height) {
    glViewport(box.x, box.y, box.width, box.height);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, width, height, 0, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

} // namespace

OverlayState::OverlayState(int screenWidth, int screenHeight) {
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    useFirstUnit();
    for (const GLenum mode : matrixModes) {
        glMatrixMode(mode);
        glPushMatrix();
        glLoadIdentity();
    }
    for (const GLenum off : switchedOff)
        glDisable(off);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    useCoordinates(letterbox(pictureWidth, pictureHeight, screenWidth, screenHeight), pictureWidth, pictureHeight);
}

OverlayState::~OverlayState() {
    for (const GLenum mode : matrixModes) {
        glMatrixMode(mode);
        glPopMatrix();
    }
    glPopClientAttrib();
    glPopAttrib();
}

KeptFrame::KeptFrame(int width, int height) : width_(width), height_(height) {
    glPushAttrib(GL_TEXTURE_BIT);
    texture_ = makeTexture();
    const int across = powerOfTwo(width);
    const int down = powerOfTwo(height);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB, across, down, 0, GL_RGB, GL_UNSIGNED_BYTE, nullptr);
    glCopyTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, 0, 0, width, height);
    glPopAttrib();
    right_ = static_cast<float>(width) / static_cast<float>(across);
    top_ = static_cast<float>(height) / static_cast<float>(down);
}

KeptFrame::~KeptFrame() {
    glDeleteTextures(1, &texture_);
}

void KeptFrame::draw(int screenWidth, int screenHeight, float brightness) const {
    glClearColor(0, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    glPushAttrib(GL_VIEWPORT_BIT);
    useCoordinates(letterbox(width_, height_, screenWidth, screenHeight), 1, 1);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, texture_);
    glColor4f(brightness, brightness, brightness, 1);
    drawQuad(0, 0, 1, 1, {0, top_, right_, 0});
    glDisable(GL_TEXTURE_2D);
    glPopAttrib();
    useCoordinates(letterbox(pictureWidth, pictureHeight, screenWidth, screenHeight), pictureWidth, pictureHeight);
}

void OverlayText::prepare() {
    if (texture_ != 0)
        return;
    glPushAttrib(GL_TEXTURE_BIT);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    texture_ = makeTexture();
    glTexImage2D(GL_TEXTURE_2D, 0, GL_ALPHA, sheetSide, sheetSide, 0, GL_ALPHA, GL_UNSIGNED_BYTE, sheetPixels().data());
    glPopClientAttrib();
    glPopAttrib();
}

void OverlayText::draw(int x, int y, int size, std::string_view text) const {
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, texture_);
    glColor4f(1, 1, 1, 1);
    for (std::array<float, 4> part{}; !text.empty(); x += size * cellWidth)
        if (findCell(takeCode(text), part))
            drawQuad(static_cast<float>(x), static_cast<float>(y), static_cast<float>(size * cellWidth),
                     static_cast<float>(size * cellHeight), part);
    glDisable(GL_TEXTURE_2D);
}

void OverlayText::drawCentred(int y, int size, std::string_view text) const {
    draw((pictureWidth - lengthOf(text) * size * cellWidth) / 2, y, size, text);
}

void drawBar(int x, int y, int width, int height, float red, float green, float blue, float alpha) {
    glColor4f(red, green, blue, alpha);
    glRecti(x, y, x + width, y + height);
}
