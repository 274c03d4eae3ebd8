// Client arrays and buffer objects. A draw call looks at every array it would read, so that one that is too short is
// found here: in a buffer object by its size, in plain memory by touching its ends.

#include "platform/headless/gl_internal.h"

#include <algorithm>
#include <cstring>

using namespace headless;
using namespace headless::detail;

namespace {

std::size_t typeSize(GLenum type) {
    switch (type) {
    case GL_DOUBLE:
        return 8;
    case GL_FLOAT:
    case GL_INT:
    case GL_UNSIGNED_INT:
        return 4;
    case GL_SHORT:
    case GL_UNSIGNED_SHORT:
        return 2;
    default:
        return 1;
    }
}

GlClientArray* clientArray(GLenum array) {
    GlState& now = state();
    switch (array) {
    case GL_VERTEX_ARRAY:
        return &now.vertexArray;
    case GL_NORMAL_ARRAY:
        return &now.normalArray;
    case GL_COLOR_ARRAY:
        return &now.colorArray;
    case GL_TEXTURE_COORD_ARRAY:
        return &now.texCoordArrays[now.clientUnit];
    default:
        return nullptr;
    }
}

void setEnabled(Entry& entry, GLenum array, bool on) {
    if (!immediate(entry, array))
        return;
    if (GlClientArray* target = clientArray(array))
        target->enabled = on;
    else
        glProblem(entry, "got an unknown array", GL_INVALID_ENUM);
}

void setPointer(GlClientArray& array, GLint size, GLenum type, GLsizei stride, const void* pointer) {
    array.size = size;
    array.type = type;
    array.stride = stride;
    array.pointer = pointer;
    array.buffer = state().arrayBuffer;
}

std::size_t elementSize(const GlClientArray& array) {
    return static_cast<std::size_t>(array.size) * typeSize(array.type);
}

/// Start of the element's bytes, or null where the array does not hold it.
const std::uint8_t* element(const GlClientArray& array, std::size_t index) {
    const std::size_t stride = array.stride != 0 ? static_cast<std::size_t>(array.stride) : elementSize(array);
    if (array.buffer == 0) {
        const auto* memory = static_cast<const std::uint8_t*>(array.pointer);
        return memory == nullptr ? nullptr : memory + index * stride;
    }
    const auto buffer = state().buffers.find(array.buffer);
    const std::size_t offset = reinterpret_cast<std::uintptr_t>(array.pointer) + index * stride;
    if (buffer == state().buffers.end() || offset + elementSize(array) > buffer->second.size())
        return nullptr;
    return buffer->second.data() + offset;
}

float component(const GlClientArray& array, const std::uint8_t* bytes, std::size_t index) {
    if (array.type == GL_DOUBLE) {
        double value = 0;
        std::memcpy(&value, bytes + index * sizeof value, sizeof value);
        return static_cast<float>(value);
    }
    float value = 0;
    if (array.type == GL_FLOAT)
        std::memcpy(&value, bytes + index * sizeof value, sizeof value);
    return value;
}

bool readable(const GlClientArray& array, std::size_t first, std::size_t last) {
    if (!array.enabled)
        return true;
    const std::uint8_t* begin = element(array, first);
    const std::uint8_t* end = element(array, last);
    if (begin == nullptr || end == nullptr)
        return false;
    volatile std::uint8_t touched = begin[0];
    touched = end[elementSize(array) - 1];
    static_cast<void>(touched);
    return true;
}

bool allReadable(std::size_t first, std::size_t last) {
    const GlState& now = state();
    return readable(now.vertexArray, first, last) && readable(now.normalArray, first, last) &&
           readable(now.colorArray, first, last) &&
           std::all_of(now.texCoordArrays.begin(), now.texCoordArrays.end(),
                       [&](const GlClientArray& array) { return readable(array, first, last); });
}

void drawElement(std::size_t index) {
    const GlClientArray& coordinates = state().texCoordArrays[0];
    if (coordinates.enabled && coordinates.size >= 2) {
        const std::uint8_t* bytes = element(coordinates, index);
        state().settings.units[0].coordinate = {component(coordinates, bytes, 0), component(coordinates, bytes, 1)};
    }
    const GlClientArray& vertices = state().vertexArray;
    const std::uint8_t* bytes = element(vertices, index);
    addVertex({component(vertices, bytes, 0), component(vertices, bytes, 1),
               vertices.size >= 3 ? component(vertices, bytes, 2) : 0});
}

/// True when there is something to draw; counts it as a primitive.
bool startDrawing(Entry& entry, GLenum mode, std::size_t first, std::size_t last) {
    if (!state().vertexArray.enabled)
        return false;
    if (!allReadable(first, last)) {
        glProblem(entry, "reads past the end of an array", GL_INVALID_OPERATION);
        return false;
    }
    startPrimitive(mode);
    return true;
}

} // namespace

void glEnableClientState(GLenum cap) {
    static constinit Entry entry{"glEnableClientState"};
    setEnabled(entry, cap, true);
}

void glDisableClientState(GLenum cap) {
    static constinit Entry entry{"glDisableClientState"};
    setEnabled(entry, cap, false);
}

void glVertexPointer(GLint size, GLenum type, GLsizei stride, const GLvoid* ptr) {
    static constinit Entry entry{"glVertexPointer"};
    if (immediate(entry, size, type, stride, ptr))
        setPointer(state().vertexArray, size, type, stride, ptr);
}

void glNormalPointer(GLenum type, GLsizei stride, const GLvoid* ptr) {
    static constinit Entry entry{"glNormalPointer"};
    if (immediate(entry, type, stride, ptr))
        setPointer(state().normalArray, 3, type, stride, ptr);
}

void glColorPointer(GLint size, GLenum type, GLsizei stride, const GLvoid* ptr) {
    static constinit Entry entry{"glColorPointer"};
    if (immediate(entry, size, type, stride, ptr))
        setPointer(state().colorArray, size, type, stride, ptr);
}

void glTexCoordPointer(GLint size, GLenum type, GLsizei stride, const GLvoid* ptr) {
    static constinit Entry entry{"glTexCoordPointer"};
    if (immediate(entry, size, type, stride, ptr))
        setPointer(state().texCoordArrays[state().clientUnit], size, type, stride, ptr);
}

void glDrawArrays(GLenum mode, GLint first, GLsizei count) {
    static constinit Entry entry{"glDrawArrays"};
    if (!immediate(entry, mode, first, count))
        return;
    if (first < 0 || count < 0) {
        glProblem(entry, "got a negative range", GL_INVALID_VALUE);
        return;
    }
    const auto begin = static_cast<std::size_t>(first);
    const std::size_t end = begin + static_cast<std::size_t>(count);
    if (begin == end || !startDrawing(entry, mode, begin, end - 1))
        return;
    if (!traffic.capturing) {
        traffic.frame.vertices += end - begin;
        return;
    }
    for (std::size_t index = begin; index < end; ++index)
        drawElement(index);
}

void glDrawElements(GLenum mode, GLsizei count, GLenum type, const GLvoid* indices) {
    static constinit Entry entry{"glDrawElements"};
    if (!immediate(entry, mode, count, type, indices) || count <= 0)
        return;
    std::vector<std::size_t> numbers;
    const auto* bytes = static_cast<const std::uint8_t*>(indices);
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
        std::uint32_t number = 0;
        std::memcpy(&number, bytes + i * typeSize(type), typeSize(type));
        numbers.push_back(number);
    }
    const auto [least, greatest] = std::minmax_element(numbers.begin(), numbers.end());
    if (startDrawing(entry, mode, *least, *greatest))
        std::for_each(numbers.begin(), numbers.end(), drawElement);
}

namespace {

void genBuffers(GLsizei n, GLuint* buffers) {
    static constinit Entry entry{"glGenBuffersARB"};
    if (!immediate(entry, n))
        return;
    for (GLsizei i = 0; i < n; ++i) {
        auto& known = state().buffers;
        buffers[i] = known.empty() ? 1 : known.rbegin()->first + 1;
        known[buffers[i]] = {};
    }
}

void deleteBuffers(GLsizei n, const GLuint* buffers) {
    static constinit Entry entry{"glDeleteBuffersARB"};
    if (!immediate(entry, n, n > 0 ? buffers[0] : 0U))
        return;
    for (GLsizei i = 0; i < n; ++i) {
        state().buffers.erase(buffers[i]);
        if (state().arrayBuffer == buffers[i])
            state().arrayBuffer = 0;
    }
}

void bindBuffer(GLenum target, GLuint buffer) {
    static constinit Entry entry{"glBindBufferARB"};
    if (!immediate(entry, target, buffer))
        return;
    if (target != GL_ARRAY_BUFFER_ARB) {
        glProblem(entry, "got a target that is not kept", GL_INVALID_ENUM);
        return;
    }
    if (buffer != 0 && !state().buffers.contains(buffer))
        addProblem("glBindBufferARB: this context never generated buffer " + std::to_string(buffer));
    state().arrayBuffer = buffer;
}

void bufferData(GLenum target, GLsizeiptrARB size, const void* data, GLenum usage) {
    static constinit Entry entry{"glBufferDataARB"};
    if (!immediate(entry, target, size, data, usage))
        return;
    if (state().arrayBuffer == 0 || size < 0) {
        glProblem(entry, "has no buffer to fill", GL_INVALID_OPERATION);
        return;
    }
    std::vector<std::uint8_t>& store = state().buffers[state().arrayBuffer];
    store.assign(static_cast<std::size_t>(size), 0);
    if (data != nullptr && size > 0)
        std::memcpy(store.data(), data, store.size());
}

} // namespace

FunctionPointer headless::detail::bufferFunction(std::string_view name) {
    if (name == "glGenBuffersARB")
        return reinterpret_cast<FunctionPointer>(&genBuffers);
    if (name == "glDeleteBuffersARB")
        return reinterpret_cast<FunctionPointer>(&deleteBuffers);
    if (name == "glBindBufferARB")
        return reinterpret_cast<FunctionPointer>(&bindBuffer);
    if (name == "glBufferDataARB")
        return reinterpret_cast<FunctionPointer>(&bufferData);
    return nullptr;
}
