// Enables, materials, lights and the other switches of a context, and what stands between glBegin and glEnd.

#include "platform/headless/gl_internal.h"

#include <algorithm>
#include <initializer_list>

using namespace headless;
using namespace headless::detail;

namespace {

GlSettings& settings() {
    return state().settings;
}

bool isOneOf(GLenum value, std::initializer_list<GLenum> values) {
    return std::find(values.begin(), values.end(), value) != values.end();
}

void setEnabled(GLenum capability, bool on) {
    if (capability == GL_TEXTURE_2D)
        settings().units[settings().activeUnit].enabled = on;
    else
        settings().enables[capability] = on;
}

void setMaterial(GLenum face, GLenum property, float first) {
    if (!isOneOf(face, {GL_FRONT, GL_BACK, GL_FRONT_AND_BACK}) ||
        !isOneOf(property, {GL_AMBIENT, GL_DIFFUSE, GL_AMBIENT_AND_DIFFUSE, GL_SPECULAR, GL_EMISSION, GL_SHININESS}))
        glProblem("got an unknown face or property");
    else if (property == GL_SHININESS && (first < 0 || first > 128))
        glProblem("got a shininess outside 0 to 128");
    else if (property == GL_SHININESS && face != GL_BACK)
        settings().shininess = first;
}

void setLight(GLenum light, GLenum property, const Float4& value) {
    if (light < GL_LIGHT0 || light >= GL_LIGHT0 + settings().lights.size() ||
        !isOneOf(property, {GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR, GL_POSITION}))
        glProblem("got an unknown light or a property that is not kept");
    else if (property == GL_POSITION)
        settings().lights[light - GL_LIGHT0] = {value, transformed(state().modelview.back(), value)};
}

void setPolygonMode(GLenum face, GLenum mode) {
    if (face != GL_BACK)
        settings().polygonMode[0] = mode;
    if (face != GL_FRONT)
        settings().polygonMode[1] = mode;
}

void setViewport(GLint x, GLint y, GLsizei width, GLsizei height) {
    if (width < 0 || height < 0)
        glProblem("got a negative size");
    else
        settings().viewport = {x, y, width, height};
}

void begin(GLenum mode) {
    if (mode > GL_POLYGON) {
        glProblem("got an unknown primitive");
        return;
    }
    traffic.insideBegin = true;
    startPrimitive(mode);
}

void end() {
    if (!traffic.insideBegin)
        glProblem("has no glBegin");
    traffic.insideBegin = false;
}

void vertex(double x, double y, double z) {
    if (traffic.insideBegin)
        addVertex(static_cast<float>(x), static_cast<float>(y), static_cast<float>(z));
    else
        glProblem("is given outside glBegin and glEnd");
}

/// The unit of the name, or null with a problem written down.
GlTextureUnit* findUnit(GLenum name) {
    if (name >= GL_TEXTURE0_ARB && name < GL_TEXTURE0_ARB + textureUnits)
        return &settings().units[name - GL_TEXTURE0_ARB];
    glProblem("got an unknown texture unit");
    return nullptr;
}

void setCoordinate(GLenum unit, double s, double t) {
    if (GlTextureUnit* const found = findUnit(unit))
        found->coordinate = {static_cast<float>(s), static_cast<float>(t)};
}

void getMatrix(GLenum name, GLfloat* numbers) {
    if (isOneOf(name, {GL_MODELVIEW_MATRIX, GL_PROJECTION_MATRIX}))
        std::ranges::copy((name == GL_MODELVIEW_MATRIX ? state().modelview : state().projection).back(), numbers);
    else
        glProblem("asks for a state that is not kept");
}

} // namespace

void glEnable(GLenum cap) {
    listed("glEnable", std::tuple(cap), [=] { setEnabled(cap, true); });
}

void glDisable(GLenum cap) {
    listed("glDisable", std::tuple(cap), [=] { setEnabled(cap, false); });
}

GLboolean glIsEnabled(GLenum cap) {
    immediate("glIsEnabled", std::tuple(cap), [] {});
    return glEnabled(cap);
}

void glGetFloatv(GLenum pname, GLfloat* params) {
    immediate("glGetFloatv", std::tuple(pname), [=] { getMatrix(pname, params); });
}

void glMaterialf(GLenum face, GLenum pname, GLfloat param) {
    attribute("glMaterialf", std::tuple(face, pname, param), [=] { setMaterial(face, pname, param); });
}

void glMaterialfv(GLenum face, GLenum pname, const GLfloat* params) {
    const std::vector<float> values(params, params + (pname == GL_SHININESS ? 1 : 4));
    attribute("glMaterialfv", std::tuple(face, pname, values), [=] { setMaterial(face, pname, values[0]); });
}

void glLightfv(GLenum light, GLenum pname, const GLfloat* params) {
    const Float4 value = {params[0], params[1], params[2], params[3]};
    listed("glLightfv", std::tuple(light, pname, value), [=] { setLight(light, pname, value); });
}

// What these set nobody asks for.

void glShadeModel(GLenum mode) {
    listed("glShadeModel", std::tuple(mode), [] {});
}

void glCullFace(GLenum mode) {
    listed("glCullFace", std::tuple(mode), [] {});
}

void glPolygonOffset(GLfloat factor, GLfloat units) {
    listed("glPolygonOffset", std::tuple(factor, units), [] {});
}

void glHint(GLenum target, GLenum mode) {
    listed("glHint", std::tuple(target, mode), [] {});
}

void glClearDepth(GLclampd depth) {
    listed("glClearDepth", std::tuple(depth), [] {});
}

void glClear(GLbitfield mask) {
    listed("glClear", std::tuple(mask), [] {});
}

void glBlendFunc(GLenum sfactor, GLenum dfactor) {
    listed("glBlendFunc", std::tuple(sfactor, dfactor), [=] { settings().blendSource = sfactor; });
}

void glDepthMask(GLboolean flag) {
    listed("glDepthMask", std::tuple(flag), [=] { settings().depthMask = flag != GL_FALSE; });
}

void glDepthFunc(GLenum func) {
    listed("glDepthFunc", std::tuple(func), [=] { settings().depthFunction = func; });
}

void glPolygonMode(GLenum face, GLenum mode) {
    listed("glPolygonMode", std::tuple(face, mode), [=] { setPolygonMode(face, mode); });
}

void glClearColor(GLclampf red, GLclampf green, GLclampf blue, GLclampf alpha) {
    const Float4 color = {red, green, blue, alpha};
    listed("glClearColor", std::tuple(color), [=] { settings().clearColor = color; });
}

void glViewport(GLint x, GLint y, GLsizei width, GLsizei height) {
    listed("glViewport", std::tuple(x, y, width, height), [=] { setViewport(x, y, width, height); });
}

void glBegin(GLenum mode) {
    listed("glBegin", std::tuple(mode), [=] { begin(mode); });
}

void glEnd() {
    attribute("glEnd", std::tuple(), [] { end(); });
}

void glVertex2f(GLfloat x, GLfloat y) {
    attribute("glVertex2f", std::tuple(x, y), [=] { vertex(x, y, 0); });
}

void glVertex3f(GLfloat x, GLfloat y, GLfloat z) {
    attribute("glVertex3f", std::tuple(x, y, z), [=] { vertex(x, y, z); });
}

void glVertex3d(GLdouble x, GLdouble y, GLdouble z) {
    attribute("glVertex3d", std::tuple(x, y, z), [=] { vertex(x, y, z); });
}

void glNormal3f(GLfloat x, GLfloat y, GLfloat z) {
    attribute("glNormal3f", std::tuple(x, y, z), [] {});
}

void glNormal3d(GLdouble x, GLdouble y, GLdouble z) {
    attribute("glNormal3d", std::tuple(x, y, z), [] {});
}

void glTexCoord2f(GLfloat s, GLfloat t) {
    attribute("glTexCoord2f", std::tuple(s, t), [=] { setCoordinate(GL_TEXTURE0_ARB, s, t); });
}

void glTexCoord2d(GLdouble s, GLdouble t) {
    attribute("glTexCoord2d", std::tuple(s, t), [=] { setCoordinate(GL_TEXTURE0_ARB, s, t); });
}

void glColor4f(GLfloat red, GLfloat green, GLfloat blue, GLfloat alpha) {
    const Float4 color = {red, green, blue, alpha};
    attribute("glColor4f", std::tuple(color), [=] { settings().color = color; });
}

void glColor4fv(const GLfloat* v) {
    const Float4 color = {v[0], v[1], v[2], v[3]};
    attribute("glColor4fv", std::tuple(color), [=] { settings().color = color; });
}

void headless::detail::activeTexture(GLenum unit) {
    listed("glActiveTextureARB", std::tuple(unit), [=] {
        if (findUnit(unit) != nullptr)
            settings().activeUnit = unit - GL_TEXTURE0_ARB;
    });
}

void headless::detail::multiTexCoord2f(GLenum unit, GLfloat s, GLfloat t) {
    attribute("glMultiTexCoord2fARB", std::tuple(unit, s, t), [=] { setCoordinate(unit, s, t); });
}
