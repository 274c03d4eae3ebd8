#pragma once

// What the headless GL keeps of a context, and the record of calls.
//
// It has the calls that the game makes and no others: a call to anything else does not link. What those calls set is
// kept where somebody asks for it; nothing is rasterised. Calls are always counted by name. On demand they are also
// recorded with their numbers (pointers as numbers, arrays spelled out, codes of glCallLists one by one), or the
// geometry is captured with the state it was drawn in. What a display list replays counts as geometry but not as calls.
// Stricter than GL: binding a texture or buffer name that this context never generated is a problem, and so is a frame
// that ends with matrices still pushed.

#include "platform/gl.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace headless {

using Float4 = std::array<float, 4>;
/// Column-major.
using GlMatrix = std::array<float, 16>;

inline constexpr std::size_t textureUnits = 4;
inline constexpr GlMatrix glIdentity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

struct GlLight {
    Float4 position = {0, 0, 1, 0};    ///< as given
    Float4 eyePosition = {0, 0, 1, 0}; ///< under the modelview matrix of that moment
};

struct GlTexture {
    GLsizei width = 0;
    GLsizei height = 0;
    bool mipmaps = false; ///< built by gluBuild2DMipmaps
    GLint minFilter = GL_NEAREST_MIPMAP_LINEAR;
    GLint magFilter = GL_LINEAR;
    GLint wrapS = GL_REPEAT;
    GLint wrapT = GL_REPEAT;
    std::vector<std::uint8_t> pixels;
};

struct GlTextureUnit {
    GLuint texture = 0;
    bool enabled = false; ///< GL_TEXTURE_2D
    std::array<float, 2> coordinate{};
};

/// An array of doubles without gaps.
struct GlClientArray {
    GLint size = 0; ///< numbers an element
    bool enabled = false;
    const void* pointer = nullptr;
    GLuint buffer = 0; ///< buffer object bound when the pointer was given
};

using GlList = std::vector<std::function<void()>>;

struct GlSettings {
    std::map<GLenum, bool> enables; ///< everything but GL_TEXTURE_2D; not in the map = never touched
    std::array<GlTextureUnit, textureUnits> units{};
    std::size_t activeUnit = 0;
    Float4 color = {1, 1, 1, 1};
    float shininess = 0; ///< of front faces
    std::array<GlLight, 8> lights{};
    GLenum blendSource = GL_ONE;
    GLenum depthFunction = GL_LESS;
    bool depthMask = true;
    std::array<GLenum, 2> polygonMode = {GL_FILL, GL_FILL}; ///< front, back
    Float4 clearColor = {0, 0, 0, 0};
    std::array<GLint, 4> viewport{};
    GLenum matrixMode = GL_MODELVIEW;
    GLuint listBase = 0;
};

struct GlState {
    GlSettings settings;
    /// Stacks of matrices; the last element is the current one.
    std::vector<GlMatrix> modelview = {glIdentity};
    std::vector<GlMatrix> projection = {glIdentity};
    std::map<GLuint, GlTexture> textures = {{0, {}}};
    std::map<GLuint, std::vector<std::uint8_t>> buffers;
    std::map<GLuint, GlList> lists;
    GlClientArray vertexArray{.size = 3};
    GlClientArray normalArray{.size = 3};
    GlClientArray texCoordArray{.size = 2};
    GLuint arrayBuffer = 0;
    int swapInterval = 1;
};

/// State of the current context, or of the bare one that is there without any.
const GlState& glState();
/// Whether the capability is on; GL_TEXTURE_2D means the active unit.
bool glEnabled(GLenum capability);

/// The extension string of every context.
void setGlExtensions(std::string extensions);
inline constexpr const char* defaultGlExtensions =
    "GL_ARB_multitexture GL_ARB_vertex_buffer_object WGL_EXT_swap_control GL_EXT_bgra";

struct GlRecord {
    std::string_view name;
    std::vector<double> arguments;
};
/// Starts or stops recording; starting anew discards what was recorded.
void recordGl(bool on);
const std::vector<GlRecord>& glRecords();
/// Forgets the recorded calls and goes on.
void clearGlRecords();
/// Calls of the function since the last reset, recorded or not.
std::uint64_t glCalls(std::string_view name);

struct GlPrimitive {
    GLenum mode = 0;
    GLuint texture = 0; ///< bound to unit 0, 0 also where GL_TEXTURE_2D is off
    Float4 color{};     ///< at the first vertex
    bool lighting = false;
    GlMatrix modelview{};
    GlMatrix projection{};
    std::array<GLint, 4> viewport{};
    std::vector<std::array<float, 3>> vertices;    ///< as given
    std::vector<std::array<float, 2>> coordinates; ///< of unit 0
};
/// Starts or stops capturing what is drawn; starting anew discards what was captured.
void captureGeometry(bool on);
const std::vector<GlPrimitive>& glPrimitives();
void clearGlPrimitives();
/// Window position of a captured vertex: pixels from the lower left corner, depth 0 to 1 before the far plane.
std::array<float, 3> windowPosition(const GlPrimitive& primitive, std::size_t vertex);

} // namespace headless
