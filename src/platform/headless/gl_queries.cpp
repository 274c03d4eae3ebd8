// What a program can ask of a context.

#include "platform/headless/gl_internal.h"

#include <algorithm>
#include <string>

using namespace headless;
using namespace headless::detail;

namespace {

std::string& extensionString() {
    static std::string extensions = defaultGlExtensions;
    return extensions;
}

/// Values of the named state; empty when it is not kept.
std::vector<double> values(GLenum name) {
    const GlState& now = state();
    const GlSettings& settings = now.settings;
    const auto all = [](const auto& array) { return std::vector<double>(array.begin(), array.end()); };
    switch (name) {
    case GL_MODELVIEW_MATRIX:
        return all(now.modelview.back());
    case GL_PROJECTION_MATRIX:
        return all(now.projection.back());
    case GL_TEXTURE_MATRIX:
        return all(now.textureMatrix.back());
    case GL_VIEWPORT:
        return all(settings.viewport);
    case GL_CURRENT_COLOR:
        return all(settings.color);
    case GL_CURRENT_NORMAL:
        return all(settings.normal);
    case GL_COLOR_CLEAR_VALUE:
        return all(settings.clearColor);
    case GL_POLYGON_MODE:
        return all(settings.polygonMode);
    case GL_MATRIX_MODE:
        return {static_cast<double>(settings.matrixMode)};
    case GL_MODELVIEW_STACK_DEPTH:
        return {static_cast<double>(now.modelview.size())};
    case GL_PROJECTION_STACK_DEPTH:
        return {static_cast<double>(now.projection.size())};
    case GL_ATTRIB_STACK_DEPTH:
        return {static_cast<double>(now.pushedSettings.size())};
    case GL_TEXTURE_BINDING_2D:
        return {static_cast<double>(settings.units[settings.activeUnit].texture)};
    case GL_ACTIVE_TEXTURE_ARB:
        return {static_cast<double>(GL_TEXTURE0_ARB + settings.activeUnit)};
    case GL_MAX_TEXTURE_UNITS_ARB:
        return {static_cast<double>(textureUnits)};
    case GL_MAX_TEXTURE_SIZE:
        return {16384};
    case GL_MAX_LIGHTS:
        return {static_cast<double>(settings.lights.size())};
    case GL_ARRAY_BUFFER_BINDING_ARB:
        return {static_cast<double>(now.arrayBuffer)};
    case GL_DEPTH_WRITEMASK:
        return {settings.depthMask ? 1.0 : 0.0};
    case GL_DEPTH_FUNC:
        return {static_cast<double>(settings.depthFunction)};
    case GL_DEPTH_CLEAR_VALUE:
        return {settings.clearDepth};
    case GL_BLEND_SRC:
        return {static_cast<double>(settings.blendSource)};
    case GL_BLEND_DST:
        return {static_cast<double>(settings.blendDestination)};
    case GL_CULL_FACE_MODE:
        return {static_cast<double>(settings.cullFace)};
    case GL_SHADE_MODEL:
        return {static_cast<double>(settings.shadeModel)};
    case GL_LIST_BASE:
        return {static_cast<double>(settings.listBase)};
    case GL_POLYGON_OFFSET_FACTOR:
        return {settings.polygonOffsetFactor};
    case GL_POLYGON_OFFSET_UNITS:
        return {settings.polygonOffsetUnits};
    default:
        if (settings.enables.contains(name) || name == GL_TEXTURE_2D)
            return {glEnabled(name) ? 1.0 : 0.0};
        return {};
    }
}

template <class Number>
void answer(Entry& entry, GLenum name, Number* results) {
    if (!immediate(entry, name))
        return;
    const std::vector<double> found = values(name);
    if (found.empty())
        glProblem(entry, "asks for a state that is not kept", GL_INVALID_ENUM);
    std::transform(found.begin(), found.end(), results, [](double value) { return static_cast<Number>(value); });
}

} // namespace

void headless::setGlExtensions(std::string extensions) {
    extensionString() = std::move(extensions);
}

void glGetFloatv(GLenum pname, GLfloat* params) {
    static constinit Entry entry{"glGetFloatv"};
    answer(entry, pname, params);
}

void glGetDoublev(GLenum pname, GLdouble* params) {
    static constinit Entry entry{"glGetDoublev"};
    answer(entry, pname, params);
}

void glGetIntegerv(GLenum pname, GLint* params) {
    static constinit Entry entry{"glGetIntegerv"};
    answer(entry, pname, params);
}

void glGetBooleanv(GLenum pname, GLboolean* params) {
    static constinit Entry entry{"glGetBooleanv"};
    if (!immediate(entry, pname))
        return;
    const std::vector<double> found = values(pname);
    if (found.empty())
        glProblem(entry, "asks for a state that is not kept", GL_INVALID_ENUM);
    std::transform(found.begin(), found.end(), params,
                   [](double value) { return static_cast<GLboolean>(value != 0 ? GL_TRUE : GL_FALSE); });
}

void glGetTexParameteriv(GLenum target, GLenum pname, GLint* params) {
    static constinit Entry entry{"glGetTexParameteriv"};
    if (!immediate(entry, target, pname))
        return;
    const GlSettings& settings = state().settings;
    const GlTexture& texture = state().textures[settings.units[settings.activeUnit].texture];
    if (pname == GL_TEXTURE_MIN_FILTER)
        *params = texture.minFilter;
    else if (pname == GL_TEXTURE_MAG_FILTER)
        *params = texture.magFilter;
    else if (pname == GL_TEXTURE_WRAP_S)
        *params = texture.wrapS;
    else if (pname == GL_TEXTURE_WRAP_T)
        *params = texture.wrapT;
    else
        glProblem(entry, "got an unknown parameter", GL_INVALID_ENUM);
}

const GLubyte* glGetString(GLenum name) {
    static constinit Entry entry{"glGetString"};
    if (!immediate(entry, name))
        return nullptr;
    const char* text = nullptr;
    if (name == GL_EXTENSIONS)
        text = extensionString().c_str();
    else if (name == GL_VERSION)
        text = "1.5 headless";
    else if (name == GL_VENDOR || name == GL_RENDERER)
        text = "headless";
    else
        glProblem(entry, "asks for an unknown text", GL_INVALID_ENUM);
    return reinterpret_cast<const GLubyte*>(text);
}

GLenum glGetError() {
    static constinit Entry entry{"glGetError"};
    if (!immediate(entry))
        return GL_INVALID_OPERATION;
    return std::exchange(state().error, static_cast<GLenum>(GL_NO_ERROR));
}

const GLubyte* gluErrorString(GLenum error) {
    return reinterpret_cast<const GLubyte*>(error == GL_NO_ERROR ? "no error" : "error");
}
