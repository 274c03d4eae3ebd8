// Client arrays. A draw call looks at every array it would read, so that one that is too short is found here: in a
// buffer object by its size, in plain memory by touching its ends.

#include "platform/headless/gl_internal.h"

#include <cstring>

using namespace headless;
using namespace headless::detail;

namespace {

/// Null with a problem written down for an array that is not kept.
GlClientArray* clientArray(GLenum array) {
    switch (array) {
    case GL_VERTEX_ARRAY:
        return &state().vertexArray;
    case GL_NORMAL_ARRAY:
        return &state().normalArray;
    case GL_TEXTURE_COORD_ARRAY:
        return &state().texCoordArray;
    default:
        glProblem("got an array that is not kept");
        return nullptr;
    }
}

void setEnabled(GLenum array, bool on) {
    if (GlClientArray* const target = clientArray(array))
        target->enabled = on;
}

void setPointer(GlClientArray& array, GLint size, GLenum type, GLsizei stride, const void* pointer) {
    if (size != array.size || type != GL_DOUBLE || stride != 0)
        glProblem("got a size, type or stride that is not kept");
    else
        array = {size, array.enabled, pointer, state().arrayBuffer};
}

std::size_t elementSize(const GlClientArray& array) {
    return static_cast<std::size_t>(array.size) * sizeof(double);
}

/// Start of the element's bytes, or null where the array does not hold it.
const std::uint8_t* element(const GlClientArray& array, std::size_t index) {
    const std::size_t address = reinterpret_cast<std::uintptr_t>(array.pointer) + index * elementSize(array);
    if (array.buffer == 0)
        return array.pointer == nullptr ? nullptr : reinterpret_cast<const std::uint8_t*>(address);
    const auto buffer = state().buffers.find(array.buffer);
    if (buffer == state().buffers.end() || address + elementSize(array) > buffer->second.size())
        return nullptr;
    return buffer->second.data() + address;
}

float component(const GlClientArray& array, std::size_t index, std::size_t number) {
    double value = 0;
    std::memcpy(&value, element(array, index) + number * sizeof value, sizeof value);
    return static_cast<float>(value);
}

bool readable(const GlClientArray& array, std::size_t first, std::size_t last) {
    if (!array.enabled)
        return true;
    const std::uint8_t* const begin = element(array, first);
    const std::uint8_t* const end = element(array, last);
    if (begin == nullptr || end == nullptr)
        return false;
    for (const volatile std::uint8_t* const touched : {begin, end + elementSize(array) - 1})
        static_cast<void>(*touched);
    return true;
}

void drawArrays(GLenum mode, GLint first, GLsizei count) {
    const GlState& now = state();
    if (first < 0 || count < 0) {
        glProblem("got a negative range");
        return;
    }
    if (count == 0 || !now.vertexArray.enabled)
        return;
    const auto begin = static_cast<std::size_t>(first);
    const std::size_t end = begin + static_cast<std::size_t>(count);
    for (const GlClientArray* const array : {&now.vertexArray, &now.normalArray, &now.texCoordArray}) {
        if (!readable(*array, begin, end - 1)) {
            glProblem("reads past the end of an array");
            return;
        }
    }
    startPrimitive(mode);
    for (std::size_t i = begin; traffic.capturing && i < end; ++i) {
        if (now.texCoordArray.enabled)
            state().settings.units[0].coordinate = {component(now.texCoordArray, i, 0),
                                                    component(now.texCoordArray, i, 1)};
        addVertex(component(now.vertexArray, i, 0), component(now.vertexArray, i, 1), component(now.vertexArray, i, 2));
    }
}

} // namespace

void glEnableClientState(GLenum cap) {
    immediate("glEnableClientState", std::tuple(cap), [=] { setEnabled(cap, true); });
}

void glDisableClientState(GLenum cap) {
    immediate("glDisableClientState", std::tuple(cap), [=] { setEnabled(cap, false); });
}

void glVertexPointer(GLint size, GLenum type, GLsizei stride, const GLvoid* ptr) {
    immediate("glVertexPointer", std::tuple(size, type, stride, ptr),
              [=] { setPointer(state().vertexArray, size, type, stride, ptr); });
}

void glNormalPointer(GLenum type, GLsizei stride, const GLvoid* ptr) {
    immediate("glNormalPointer", std::tuple(type, stride, ptr),
              [=] { setPointer(state().normalArray, 3, type, stride, ptr); });
}

void glTexCoordPointer(GLint size, GLenum type, GLsizei stride, const GLvoid* ptr) {
    immediate("glTexCoordPointer", std::tuple(size, type, stride, ptr),
              [=] { setPointer(state().texCoordArray, size, type, stride, ptr); });
}

void glDrawArrays(GLenum mode, GLint first, GLsizei count) {
    immediate("glDrawArrays", std::tuple(mode, first, count), [=] { drawArrays(mode, first, count); });
}
