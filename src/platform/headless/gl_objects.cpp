// What a context keeps under numbers: textures, buffer objects and display lists.

#include "platform/headless/gl_internal.h"

#include <algorithm>
#include <span>

using namespace headless;
using namespace headless::detail;

namespace {

constexpr GLsizei longestSide = 16384;

/// The first of so many new objects.
template <class Object>
GLuint generate(std::map<GLuint, Object>& objects, GLsizei number) {
    const GLuint first = objects.empty() ? 1 : objects.rbegin()->first + 1;
    for (GLsizei i = 0; i < number; ++i)
        objects[first + static_cast<GLuint>(i)] = {};
    return first;
}

template <class Object>
void generateEach(std::map<GLuint, Object>& objects, GLsizei number, GLuint* names) {
    std::generate_n(names, number, [&] { return generate(objects, 1); });
}

template <class Object>
void expectKnown(const std::map<GLuint, Object>& objects, GLuint name) {
    if (name != 0 && !objects.contains(name))
        glProblem("binds " + std::to_string(name) + ", which this context never generated");
}

bool isTarget(GLenum target, GLenum kept) {
    if (target != kept)
        glProblem("got a target that is not kept");
    return target == kept;
}

GLuint& boundTexture() {
    GlSettings& settings = state().settings;
    return settings.units[settings.activeUnit].texture;
}

void bindTexture(GLenum target, GLuint texture) {
    if (!isTarget(target, GL_TEXTURE_2D))
        return;
    expectKnown(state().textures, texture);
    boundTexture() = texture;
}

void setParameter(GLenum target, GLenum name, GLint value) {
    GlTexture& texture = state().textures[boundTexture()];
    if (!isTarget(target, GL_TEXTURE_2D))
        return;
    if (name == GL_TEXTURE_MIN_FILTER)
        texture.minFilter = value;
    else if (name == GL_TEXTURE_MAG_FILTER)
        texture.magFilter = value;
    else if (name == GL_TEXTURE_WRAP_S)
        texture.wrapS = value;
    else if (name == GL_TEXTURE_WRAP_T)
        texture.wrapT = value;
    else
        glProblem("got an unknown parameter");
}

bool isSide(GLsizei length) {
    return length >= 1 && length <= longestSide;
}

void upload(GLenum target, GLsizei width, GLsizei height, GLenum format, GLenum type, const void* pixels) {
    if (!isTarget(target, GL_TEXTURE_2D))
        return;
    if ((format != GL_RGB && format != GL_RGBA) || type != GL_UNSIGNED_BYTE) {
        glProblem("got a format that is not kept");
    } else if (!isSide(width) || !isSide(height)) {
        glProblem("got a size that cannot be");
    } else {
        GlTexture& texture = state().textures[boundTexture()];
        texture.width = width;
        texture.height = height;
        const auto* const bytes = static_cast<const std::uint8_t*>(pixels);
        texture.pixels.assign(bytes, bytes + std::ptrdiff_t{width} * height * (format == GL_RGB ? 3 : 4));
    }
}

void fill(GLenum target, GLsizeiptrARB size, const void* data) {
    if (!isTarget(target, GL_ARRAY_BUFFER_ARB))
        return;
    const auto* const bytes = static_cast<const std::uint8_t*>(data);
    if (state().arrayBuffer == 0 || size < 0)
        glProblem("has no buffer to fill");
    else
        state().buffers[state().arrayBuffer].assign(bytes, bytes + size);
}

void newList(GLuint list, GLenum mode) {
    if (traffic.compiled != nullptr || list == 0 || mode != GL_COMPILE) {
        glProblem("cannot start such a list here");
        return;
    }
    traffic.compiled = &state().lists[list];
    traffic.compiled->clear();
}

void endList() {
    if (traffic.compiled == nullptr)
        glProblem("has no glNewList");
    traffic.compiled = nullptr;
}

} // namespace

void glGenTextures(GLsizei n, GLuint* textures) {
    immediate("glGenTextures", std::tuple(n), [=] { generateEach(state().textures, n, textures); });
}

void glDeleteTextures(GLsizei n, const GLuint* textures) {
    const std::span names(textures, static_cast<std::size_t>(n));
    immediate("glDeleteTextures", std::tuple(n, names), [=] {
        for (const GLuint name : names) {
            if (name != 0)
                state().textures.erase(name);
            for (GlTextureUnit& unit : state().settings.units)
                if (unit.texture == name)
                    unit.texture = 0;
        }
    });
}

void glBindTexture(GLenum target, GLuint texture) {
    listed("glBindTexture", std::tuple(target, texture), [=] { bindTexture(target, texture); });
}

void glTexParameteri(GLenum target, GLenum pname, GLint param) {
    listed("glTexParameteri", std::tuple(target, pname, param), [=] { setParameter(target, pname, param); });
}

void glPixelStorei(GLenum pname, GLint param) {
    immediate("glPixelStorei", std::tuple(pname, param), [] {});
}

void glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height, GLint border,
                  GLenum format, GLenum type, const GLvoid* pixels) {
    immediate("glTexImage2D", std::tuple(target, level, internalFormat, width, height, border, format, type), [=] {
        if (level == 0 && border == 0)
            upload(target, width, height, format, type, pixels);
        else
            glProblem("got a level or border that is not kept");
    });
}

GLint gluBuild2DMipmaps(GLenum target, GLint internalFormat, GLsizei width, GLsizei height, GLenum format, GLenum type,
                        const void* data) {
    immediate("gluBuild2DMipmaps", std::tuple(target, internalFormat, width, height, format, type), [=] {
        upload(target, width, height, format, type, data);
        state().textures[boundTexture()].mipmaps = true;
    });
    return 0;
}

void headless::detail::genBuffers(GLsizei n, GLuint* buffers) {
    immediate("glGenBuffersARB", std::tuple(n), [=] { generateEach(state().buffers, n, buffers); });
}

void headless::detail::deleteBuffers(GLsizei n, const GLuint* buffers) {
    const std::span names(buffers, static_cast<std::size_t>(n));
    immediate("glDeleteBuffersARB", std::tuple(n, names), [=] {
        for (const GLuint name : names) {
            state().buffers.erase(name);
            if (state().arrayBuffer == name)
                state().arrayBuffer = 0;
        }
    });
}

void headless::detail::bindBuffer(GLenum target, GLuint buffer) {
    immediate("glBindBufferARB", std::tuple(target, buffer), [=] {
        if (!isTarget(target, GL_ARRAY_BUFFER_ARB))
            return;
        expectKnown(state().buffers, buffer);
        state().arrayBuffer = buffer;
    });
}

void headless::detail::bufferData(GLenum target, GLsizeiptrARB size, const void* data, GLenum usage) {
    immediate("glBufferDataARB", std::tuple(target, size, data, usage), [=] { fill(target, size, data); });
}

GLuint glGenLists(GLsizei range) {
    GLuint first = 0;
    immediate("glGenLists", std::tuple(range), [&] { first = generate(state().lists, range); });
    return first;
}

void glDeleteLists(GLuint list, GLsizei range) {
    immediate("glDeleteLists", std::tuple(list, range), [=] {
        for (GLsizei i = 0; i < range; ++i)
            state().lists.erase(list + static_cast<GLuint>(i));
    });
}

void glNewList(GLuint list, GLenum mode) {
    immediate("glNewList", std::tuple(list, mode), [=] { newList(list, mode); });
}

void glEndList() {
    immediate("glEndList", std::tuple(), [] { endList(); });
}

void glListBase(GLuint base) {
    listed("glListBase", std::tuple(base), [=] { state().settings.listBase = base; });
}

void glCallLists(GLsizei n, GLenum type, const GLvoid* lists) {
    const auto* const bytes = static_cast<const std::uint8_t*>(lists);
    const std::vector<std::uint8_t> codes(bytes, bytes + n);
    attribute("glCallLists", std::tuple(n, type, codes), [=] {
        if (type != GL_UNSIGNED_BYTE)
            glProblem("got a type that is not kept");
        for (const GLuint code : codes)
            if (const auto list = state().lists.find(state().settings.listBase + code); list != state().lists.end())
                std::ranges::for_each(list->second, [](const auto& call) { call(); });
    });
}
