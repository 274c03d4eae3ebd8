// Texture objects and their images.

#include "platform/headless/gl_internal.h"

#include <algorithm>

using namespace headless;
using namespace headless::detail;

namespace {

GlTexture& boundTexture() {
    const GlSettings& settings = state().settings;
    return state().textures[settings.units[settings.activeUnit].texture];
}

std::size_t bytesPerPixel(GLenum format) {
    switch (format) {
    case GL_RGB:
    case GL_BGR:
        return 3;
    case GL_RGBA:
    case GL_BGRA:
        return 4;
    case GL_LUMINANCE_ALPHA:
        return 2;
    default:
        return 1;
    }
}

bool isSide(GLsizei length) {
    return length >= 1 && length <= 16384;
}

void setParameter(Entry& entry, GLenum target, GLenum name, GLint value) {
    GlTexture& texture = boundTexture();
    if (target != GL_TEXTURE_2D)
        glProblem(entry, "got an unknown target", GL_INVALID_ENUM);
    else if (name == GL_TEXTURE_MIN_FILTER)
        texture.minFilter = value;
    else if (name == GL_TEXTURE_MAG_FILTER)
        texture.magFilter = value;
    else if (name == GL_TEXTURE_WRAP_S)
        texture.wrapS = value;
    else if (name == GL_TEXTURE_WRAP_T)
        texture.wrapT = value;
    else
        glProblem(entry, "got an unknown parameter", GL_INVALID_ENUM);
}

} // namespace

void glGenTextures(GLsizei n, GLuint* textures) {
    static constinit Entry entry{"glGenTextures"};
    if (!immediate(entry, n))
        return;
    for (GLsizei i = 0; i < n; ++i) {
        // The map always holds name 0, so its last key is the highest name in use.
        textures[i] = state().textures.rbegin()->first + 1;
        state().textures[textures[i]] = {};
    }
}

void glDeleteTextures(GLsizei n, const GLuint* textures) {
    static constinit Entry entry{"glDeleteTextures"};
    if (!immediate(entry, n, n > 0 ? textures[0] : 0U))
        return;
    for (GLsizei i = 0; i < n; ++i) {
        if (textures[i] == 0)
            continue;
        state().textures.erase(textures[i]);
        for (GlTextureUnit& unit : state().settings.units)
            if (unit.texture == textures[i])
                unit.texture = 0;
    }
}

GLboolean glIsTexture(GLuint texture) {
    static constinit Entry entry{"glIsTexture"};
    return immediate(entry, texture) && texture != 0 && state().textures.contains(texture);
}

void glBindTexture(GLenum target, GLuint texture) {
    static constinit Entry entry{"glBindTexture"};
    note(entry, target, texture);
    if (compiled([=] { glBindTexture(target, texture); }) || !outsideBegin(entry))
        return;
    if (target != GL_TEXTURE_2D) {
        glProblem(entry, "got an unknown target", GL_INVALID_ENUM);
        return;
    }
    if (!state().textures.contains(texture))
        addProblem("glBindTexture: this context never generated texture " + std::to_string(texture));
    GlSettings& settings = state().settings;
    settings.units[settings.activeUnit].texture = texture;
}

void glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height, GLint border,
                  GLenum format, GLenum type, const GLvoid* pixels) {
    static constinit Entry entry{"glTexImage2D"};
    if (!immediate(entry, target, level, internalFormat, width, height, border, format, type))
        return;
    if (!isSide(width) || !isSide(height) || border != 0) {
        glProblem(entry, "got a size or border that cannot be", GL_INVALID_VALUE);
        return;
    }
    if (level != 0)
        return;
    GlTexture& texture = boundTexture();
    texture.width = width;
    texture.height = height;
    texture.internalFormat = internalFormat;
    texture.format = format;
    texture.pixels.clear();
    if (pixels != nullptr && type == GL_UNSIGNED_BYTE) {
        const auto* bytes = static_cast<const std::uint8_t*>(pixels);
        texture.pixels.assign(bytes, bytes + static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                                                 bytesPerPixel(format));
    }
}

GLint gluBuild2DMipmaps(GLenum target, GLint internalFormat, GLsizei width, GLsizei height, GLenum format, GLenum type,
                        const void* data) {
    static constinit Entry entry{"gluBuild2DMipmaps"};
    if (!immediate(entry, target, internalFormat, width, height, format, type))
        return GL_INVALID_OPERATION;
    if (!isSide(width) || !isSide(height) || data == nullptr)
        return GLU_INVALID_VALUE;
    GlTexture& texture = boundTexture();
    texture.mipmaps = true;
    texture.width = width;
    texture.height = height;
    texture.internalFormat = internalFormat;
    texture.format = format;
    return 0;
}

void glTexParameteri(GLenum target, GLenum pname, GLint param) {
    static constinit Entry entry{"glTexParameteri"};
    note(entry, target, pname, param);
    if (!compiled([=] { glTexParameteri(target, pname, param); }) && outsideBegin(entry))
        setParameter(entry, target, pname, param);
}

void glTexParameterf(GLenum target, GLenum pname, GLfloat param) {
    static constinit Entry entry{"glTexParameterf"};
    note(entry, target, pname, param);
    if (!compiled([=] { glTexParameterf(target, pname, param); }) && outsideBegin(entry))
        setParameter(entry, target, pname, static_cast<GLint>(param));
}

void glTexEnvi(GLenum target, GLenum pname, GLint param) {
    static constinit Entry entry{"glTexEnvi"};
    note(entry, target, pname, param);
    if (compiled([=] { glTexEnvi(target, pname, param); }) || !outsideBegin(entry))
        return;
    GlSettings& settings = state().settings;
    if (target == GL_TEXTURE_ENV && pname == GL_TEXTURE_ENV_MODE)
        settings.units[settings.activeUnit].environment = param;
}

void glTexEnvf(GLenum target, GLenum pname, GLfloat param) {
    glTexEnvi(target, pname, static_cast<GLint>(param));
}

void glPixelStorei(GLenum pname, GLint param) {
    static constinit Entry entry{"glPixelStorei"};
    immediate(entry, pname, param);
}

void glReadPixels(GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum type, GLvoid* pixels) {
    static constinit Entry entry{"glReadPixels"};
    if (!immediate(entry, x, y, width, height, format, type))
        return;
    const std::size_t channel = type == GL_FLOAT ? sizeof(float) : 1;
    const std::size_t size =
        static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * bytesPerPixel(format) * channel;
    std::fill_n(static_cast<std::uint8_t*>(pixels), size, std::uint8_t{0});
}
