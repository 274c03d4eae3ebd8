// Enables, materials, lights and the other switches of a context.

#include "platform/headless/gl_internal.h"

#include <algorithm>

using namespace headless;
using namespace headless::detail;

namespace {

constexpr std::size_t attributeDepth = 16;

void setEnabled(GLenum capability, bool on) {
    GlSettings& settings = state().settings;
    if (capability == GL_TEXTURE_2D)
        settings.units[settings.activeUnit].enabled = on;
    else
        settings.enables[capability] = on;
}

Float4 four(const GLfloat* values) {
    return {values[0], values[1], values[2], values[3]};
}

/// Sets one property of one side; false when there is no such property.
bool setMaterial(GlMaterial& material, GLenum property, const Float4& value) {
    switch (property) {
    case GL_AMBIENT:
        material.ambient = value;
        return true;
    case GL_DIFFUSE:
        material.diffuse = value;
        return true;
    case GL_AMBIENT_AND_DIFFUSE:
        material.ambient = material.diffuse = value;
        return true;
    case GL_SPECULAR:
        material.specular = value;
        return true;
    case GL_EMISSION:
        material.emission = value;
        return true;
    case GL_SHININESS:
        material.shininess = value[0];
        return true;
    default:
        return false;
    }
}

void setMaterials(Entry& entry, GLenum face, GLenum property, const Float4& value) {
    GlSettings& settings = state().settings;
    bool known = face == GL_FRONT || face == GL_BACK || face == GL_FRONT_AND_BACK;
    if (known && face != GL_BACK)
        known = setMaterial(settings.frontMaterial, property, value);
    if (known && face != GL_FRONT)
        known = setMaterial(settings.backMaterial, property, value);
    if (!known)
        glProblem(entry, "got an unknown face or property", GL_INVALID_ENUM);
    else if (property == GL_SHININESS && (value[0] < 0 || value[0] > 128))
        glProblem(entry, "got a shininess outside 0 to 128", GL_INVALID_VALUE);
}

void setLight(Entry& entry, GLenum light, GLenum property, const Float4& value) {
    GlSettings& settings = state().settings;
    if (light < GL_LIGHT0 || light >= GL_LIGHT0 + settings.lights.size()) {
        glProblem(entry, "got an unknown light", GL_INVALID_ENUM);
        return;
    }
    GlLight& target = settings.lights[light - GL_LIGHT0];
    switch (property) {
    case GL_AMBIENT:
        target.ambient = value;
        break;
    case GL_DIFFUSE:
        target.diffuse = value;
        break;
    case GL_SPECULAR:
        target.specular = value;
        break;
    case GL_POSITION:
        target.position = value;
        target.eyePosition = transformed(state().modelview.back(), value);
        break;
    default:
        glProblem(entry, "got a property that is not kept", GL_INVALID_ENUM);
    }
}

} // namespace

void glEnable(GLenum cap) {
    static constinit Entry entry{"glEnable"};
    note(entry, cap);
    if (!compiled([=] { glEnable(cap); }) && outsideBegin(entry))
        setEnabled(cap, true);
}

void glDisable(GLenum cap) {
    static constinit Entry entry{"glDisable"};
    note(entry, cap);
    if (!compiled([=] { glDisable(cap); }) && outsideBegin(entry))
        setEnabled(cap, false);
}

GLboolean glIsEnabled(GLenum cap) {
    static constinit Entry entry{"glIsEnabled"};
    if (!immediate(entry, cap))
        return GL_FALSE;
    const GlState& now = state();
    switch (cap) {
    case GL_VERTEX_ARRAY:
        return now.vertexArray.enabled;
    case GL_NORMAL_ARRAY:
        return now.normalArray.enabled;
    case GL_COLOR_ARRAY:
        return now.colorArray.enabled;
    case GL_TEXTURE_COORD_ARRAY:
        return now.texCoordArrays[now.clientUnit].enabled;
    default:
        return glEnabled(cap);
    }
}

void glMaterialfv(GLenum face, GLenum pname, const GLfloat* params) {
    static constinit Entry entry{"glMaterialfv"};
    const Float4 value = pname == GL_SHININESS ? Float4{params[0]} : four(params);
    if (pname == GL_SHININESS)
        note(entry, face, pname, value[0]);
    else
        note(entry, face, pname, value[0], value[1], value[2], value[3]);
    // Materials may change between glBegin and glEnd.
    if (!compiled([=] { glMaterialfv(face, pname, value.data()); }))
        setMaterials(entry, face, pname, value);
}

void glMaterialf(GLenum face, GLenum pname, GLfloat param) {
    static constinit Entry entry{"glMaterialf"};
    note(entry, face, pname, param);
    if (compiled([=] { glMaterialf(face, pname, param); }))
        return;
    if (pname == GL_SHININESS)
        setMaterials(entry, face, pname, {param});
    else
        glProblem(entry, "takes only the shininess", GL_INVALID_ENUM);
}

void glLightfv(GLenum light, GLenum pname, const GLfloat* params) {
    static constinit Entry entry{"glLightfv"};
    const Float4 value = four(params);
    note(entry, light, pname, value[0], value[1], value[2], value[3]);
    if (!compiled([=] { glLightfv(light, pname, value.data()); }) && outsideBegin(entry))
        setLight(entry, light, pname, value);
}

void glLightModelfv(GLenum pname, const GLfloat* params) {
    static constinit Entry entry{"glLightModelfv"};
    const Float4 value = pname == GL_LIGHT_MODEL_AMBIENT ? four(params) : Float4{params[0]};
    immediate(entry, pname, value[0], value[1], value[2], value[3]);
}

void glLightModeli(GLenum pname, GLint param) {
    static constinit Entry entry{"glLightModeli"};
    immediate(entry, pname, param);
}

void glColorMaterial(GLenum face, GLenum mode) {
    static constinit Entry entry{"glColorMaterial"};
    immediate(entry, face, mode);
}

void glShadeModel(GLenum mode) {
    static constinit Entry entry{"glShadeModel"};
    note(entry, mode);
    if (!compiled([=] { glShadeModel(mode); }) && outsideBegin(entry))
        state().settings.shadeModel = mode;
}

void glHint(GLenum target, GLenum mode) {
    static constinit Entry entry{"glHint"};
    if (immediate(entry, target, mode))
        state().settings.hints[target] = mode;
}

void glBlendFunc(GLenum sfactor, GLenum dfactor) {
    static constinit Entry entry{"glBlendFunc"};
    note(entry, sfactor, dfactor);
    if (compiled([=] { glBlendFunc(sfactor, dfactor); }) || !outsideBegin(entry))
        return;
    state().settings.blendSource = sfactor;
    state().settings.blendDestination = dfactor;
}

void glAlphaFunc(GLenum func, GLclampf ref) {
    static constinit Entry entry{"glAlphaFunc"};
    note(entry, func, ref);
    if (compiled([=] { glAlphaFunc(func, ref); }) || !outsideBegin(entry))
        return;
    state().settings.alphaFunction = func;
    state().settings.alphaReference = ref;
}

void glCullFace(GLenum mode) {
    static constinit Entry entry{"glCullFace"};
    note(entry, mode);
    if (!compiled([=] { glCullFace(mode); }) && outsideBegin(entry))
        state().settings.cullFace = mode;
}

void glFrontFace(GLenum mode) {
    static constinit Entry entry{"glFrontFace"};
    note(entry, mode);
    if (!compiled([=] { glFrontFace(mode); }) && outsideBegin(entry))
        state().settings.frontFace = mode;
}

void glDepthMask(GLboolean flag) {
    static constinit Entry entry{"glDepthMask"};
    note(entry, flag);
    if (!compiled([=] { glDepthMask(flag); }) && outsideBegin(entry))
        state().settings.depthMask = flag != GL_FALSE;
}

void glDepthFunc(GLenum func) {
    static constinit Entry entry{"glDepthFunc"};
    note(entry, func);
    if (!compiled([=] { glDepthFunc(func); }) && outsideBegin(entry))
        state().settings.depthFunction = func;
}

void glPolygonMode(GLenum face, GLenum mode) {
    static constinit Entry entry{"glPolygonMode"};
    note(entry, face, mode);
    if (compiled([=] { glPolygonMode(face, mode); }) || !outsideBegin(entry))
        return;
    if (face != GL_BACK)
        state().settings.polygonMode[0] = mode;
    if (face != GL_FRONT)
        state().settings.polygonMode[1] = mode;
}

void glPolygonOffset(GLfloat factor, GLfloat units) {
    static constinit Entry entry{"glPolygonOffset"};
    note(entry, factor, units);
    if (compiled([=] { glPolygonOffset(factor, units); }) || !outsideBegin(entry))
        return;
    state().settings.polygonOffsetFactor = factor;
    state().settings.polygonOffsetUnits = units;
}

void glLineWidth(GLfloat width) {
    static constinit Entry entry{"glLineWidth"};
    note(entry, width);
    if (!compiled([=] { glLineWidth(width); }) && outsideBegin(entry))
        state().settings.lineWidth = width;
}

void glPointSize(GLfloat size) {
    static constinit Entry entry{"glPointSize"};
    note(entry, size);
    if (!compiled([=] { glPointSize(size); }) && outsideBegin(entry))
        state().settings.pointSize = size;
}

void glColorMask(GLboolean red, GLboolean green, GLboolean blue, GLboolean alpha) {
    static constinit Entry entry{"glColorMask"};
    immediate(entry, red, green, blue, alpha);
}

void glScissor(GLint x, GLint y, GLsizei width, GLsizei height) {
    static constinit Entry entry{"glScissor"};
    immediate(entry, x, y, width, height);
}

void glClearColor(GLclampf red, GLclampf green, GLclampf blue, GLclampf alpha) {
    static constinit Entry entry{"glClearColor"};
    if (immediate(entry, red, green, blue, alpha))
        state().settings.clearColor = {red, green, blue, alpha};
}

void glClearDepth(GLclampd depth) {
    static constinit Entry entry{"glClearDepth"};
    if (immediate(entry, depth))
        state().settings.clearDepth = depth;
}

void glClear(GLbitfield mask) {
    static constinit Entry entry{"glClear"};
    immediate(entry, mask);
}

void glViewport(GLint x, GLint y, GLsizei width, GLsizei height) {
    static constinit Entry entry{"glViewport"};
    if (!immediate(entry, x, y, width, height))
        return;
    if (width < 0 || height < 0)
        glProblem(entry, "got a negative size", GL_INVALID_VALUE);
    else
        state().settings.viewport = {x, y, width, height};
}

void glFinish() {
    static constinit Entry entry{"glFinish"};
    immediate(entry);
}

void glFlush() {
    static constinit Entry entry{"glFlush"};
    immediate(entry);
}

void glPushAttrib(GLbitfield mask) {
    static constinit Entry entry{"glPushAttrib"};
    note(entry, mask);
    if (compiled([=] { glPushAttrib(mask); }) || !outsideBegin(entry))
        return;
    if (state().pushedSettings.size() == attributeDepth)
        glProblem(entry, "finds the stack full", GL_STACK_OVERFLOW);
    else
        state().pushedSettings.push_back(state().settings);
}

void glPopAttrib() {
    static constinit Entry entry{"glPopAttrib"};
    note(entry);
    if (compiled([] { glPopAttrib(); }) || !outsideBegin(entry))
        return;
    if (state().pushedSettings.empty()) {
        glProblem(entry, "has no glPushAttrib", GL_STACK_UNDERFLOW);
        return;
    }
    state().settings = std::move(state().pushedSettings.back());
    state().pushedSettings.pop_back();
}
