// glBegin to glEnd and the current vertex attributes.

#include "platform/headless/gl_internal.h"

using namespace headless;
using namespace headless::detail;

namespace {

void vertex(Entry& entry, float x, float y, float z) {
    if (!traffic.insideBegin) {
        glProblem(entry, "is given outside glBegin and glEnd", GL_INVALID_OPERATION);
        return;
    }
    addVertex({x, y, z});
}

void setColor(float red, float green, float blue, float alpha) {
    state().settings.color = {red, green, blue, alpha};
}

void setCoordinate(std::size_t unit, float s, float t) {
    state().settings.units[unit].coordinate = {s, t};
}

} // namespace

void glBegin(GLenum mode) {
    static constinit Entry entry{"glBegin"};
    note(entry, mode);
    if (compiled([=] { glBegin(mode); }) || !outsideBegin(entry))
        return;
    if (mode > GL_POLYGON) {
        glProblem(entry, "got an unknown primitive", GL_INVALID_ENUM);
        return;
    }
    traffic.insideBegin = true;
    traffic.beginMode = mode;
    startPrimitive(mode);
}

void glEnd() {
    static constinit Entry entry{"glEnd"};
    note(entry);
    if (compiled([] { glEnd(); }))
        return;
    if (!traffic.insideBegin) {
        glProblem(entry, "has no glBegin", GL_INVALID_OPERATION);
        return;
    }
    traffic.insideBegin = false;
}

void glVertex2f(GLfloat x, GLfloat y) {
    static constinit Entry entry{"glVertex2f"};
    note(entry, x, y);
    if (!compiled([=] { glVertex2f(x, y); }))
        vertex(entry, x, y, 0);
}

void glVertex2d(GLdouble x, GLdouble y) {
    static constinit Entry entry{"glVertex2d"};
    note(entry, x, y);
    if (!compiled([=] { glVertex2d(x, y); }))
        vertex(entry, static_cast<float>(x), static_cast<float>(y), 0);
}

void glVertex2i(GLint x, GLint y) {
    static constinit Entry entry{"glVertex2i"};
    note(entry, x, y);
    if (!compiled([=] { glVertex2i(x, y); }))
        vertex(entry, static_cast<float>(x), static_cast<float>(y), 0);
}

void glVertex3f(GLfloat x, GLfloat y, GLfloat z) {
    static constinit Entry entry{"glVertex3f"};
    note(entry, x, y, z);
    if (!compiled([=] { glVertex3f(x, y, z); }))
        vertex(entry, x, y, z);
}

void glVertex3fv(const GLfloat* v) {
    static constinit Entry entry{"glVertex3fv"};
    note(entry, v[0], v[1], v[2]);
    if (!compiled([x = v[0], y = v[1], z = v[2]] { glVertex3f(x, y, z); }))
        vertex(entry, v[0], v[1], v[2]);
}

void glVertex3d(GLdouble x, GLdouble y, GLdouble z) {
    static constinit Entry entry{"glVertex3d"};
    note(entry, x, y, z);
    if (!compiled([=] { glVertex3d(x, y, z); }))
        vertex(entry, static_cast<float>(x), static_cast<float>(y), static_cast<float>(z));
}

void glVertex3dv(const GLdouble* v) {
    static constinit Entry entry{"glVertex3dv"};
    note(entry, v[0], v[1], v[2]);
    if (!compiled([x = v[0], y = v[1], z = v[2]] { glVertex3d(x, y, z); }))
        vertex(entry, static_cast<float>(v[0]), static_cast<float>(v[1]), static_cast<float>(v[2]));
}

void glNormal3f(GLfloat x, GLfloat y, GLfloat z) {
    static constinit Entry entry{"glNormal3f"};
    note(entry, x, y, z);
    if (!compiled([=] { glNormal3f(x, y, z); }))
        state().settings.normal = {x, y, z};
}

void glNormal3fv(const GLfloat* v) {
    static constinit Entry entry{"glNormal3fv"};
    note(entry, v[0], v[1], v[2]);
    if (!compiled([x = v[0], y = v[1], z = v[2]] { glNormal3f(x, y, z); }))
        state().settings.normal = {v[0], v[1], v[2]};
}

void glNormal3d(GLdouble x, GLdouble y, GLdouble z) {
    static constinit Entry entry{"glNormal3d"};
    note(entry, x, y, z);
    if (!compiled([=] { glNormal3d(x, y, z); }))
        state().settings.normal = {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
}

void glTexCoord2f(GLfloat s, GLfloat t) {
    static constinit Entry entry{"glTexCoord2f"};
    note(entry, s, t);
    if (!compiled([=] { glTexCoord2f(s, t); }))
        setCoordinate(0, s, t);
}

void glTexCoord2fv(const GLfloat* v) {
    static constinit Entry entry{"glTexCoord2fv"};
    note(entry, v[0], v[1]);
    if (!compiled([s = v[0], t = v[1]] { glTexCoord2f(s, t); }))
        setCoordinate(0, v[0], v[1]);
}

void glTexCoord2d(GLdouble s, GLdouble t) {
    static constinit Entry entry{"glTexCoord2d"};
    note(entry, s, t);
    if (!compiled([=] { glTexCoord2d(s, t); }))
        setCoordinate(0, static_cast<float>(s), static_cast<float>(t));
}

void glTexCoord2i(GLint s, GLint t) {
    static constinit Entry entry{"glTexCoord2i"};
    note(entry, s, t);
    if (!compiled([=] { glTexCoord2i(s, t); }))
        setCoordinate(0, static_cast<float>(s), static_cast<float>(t));
}

void glColor3f(GLfloat red, GLfloat green, GLfloat blue) {
    static constinit Entry entry{"glColor3f"};
    note(entry, red, green, blue);
    if (!compiled([=] { glColor3f(red, green, blue); }))
        setColor(red, green, blue, 1);
}

void glColor3fv(const GLfloat* v) {
    static constinit Entry entry{"glColor3fv"};
    note(entry, v[0], v[1], v[2]);
    if (!compiled([r = v[0], g = v[1], b = v[2]] { glColor3f(r, g, b); }))
        setColor(v[0], v[1], v[2], 1);
}

void glColor4f(GLfloat red, GLfloat green, GLfloat blue, GLfloat alpha) {
    static constinit Entry entry{"glColor4f"};
    note(entry, red, green, blue, alpha);
    if (!compiled([=] { glColor4f(red, green, blue, alpha); }))
        setColor(red, green, blue, alpha);
}

void glColor4fv(const GLfloat* v) {
    static constinit Entry entry{"glColor4fv"};
    note(entry, v[0], v[1], v[2], v[3]);
    if (!compiled([r = v[0], g = v[1], b = v[2], a = v[3]] { glColor4f(r, g, b, a); }))
        setColor(v[0], v[1], v[2], v[3]);
}

void glColor4ub(GLubyte red, GLubyte green, GLubyte blue, GLubyte alpha) {
    static constinit Entry entry{"glColor4ub"};
    note(entry, red, green, blue, alpha);
    if (!compiled([=] { glColor4ub(red, green, blue, alpha); }))
        setColor(red / 255.0F, green / 255.0F, blue / 255.0F, alpha / 255.0F);
}

void glRectf(GLfloat x1, GLfloat y1, GLfloat x2, GLfloat y2) {
    static constinit Entry entry{"glRectf"};
    note(entry, x1, y1, x2, y2);
    if (compiled([=] { glRectf(x1, y1, x2, y2); }) || !outsideBegin(entry))
        return;
    startPrimitive(GL_POLYGON);
    addVertex({x1, y1, 0});
    addVertex({x2, y1, 0});
    addVertex({x2, y2, 0});
    addVertex({x1, y2, 0});
}

namespace {

/// Index of the unit, or textureUnits with a problem written down.
std::size_t unitIndex(Entry& entry, GLenum unit) {
    if (unit >= GL_TEXTURE0_ARB && unit < GL_TEXTURE0_ARB + textureUnits)
        return unit - GL_TEXTURE0_ARB;
    glProblem(entry, "got an unknown texture unit", GL_INVALID_ENUM);
    return textureUnits;
}

void activeTexture(GLenum unit) {
    static constinit Entry entry{"glActiveTextureARB"};
    note(entry, unit);
    if (compiled([=] { activeTexture(unit); }) || !outsideBegin(entry))
        return;
    if (const std::size_t index = unitIndex(entry, unit); index < textureUnits)
        state().settings.activeUnit = index;
}

void clientActiveTexture(GLenum unit) {
    static constinit Entry entry{"glClientActiveTextureARB"};
    if (!immediate(entry, unit))
        return;
    if (const std::size_t index = unitIndex(entry, unit); index < textureUnits)
        state().clientUnit = index;
}

void multiTexCoord2f(GLenum unit, GLfloat s, GLfloat t) {
    static constinit Entry entry{"glMultiTexCoord2fARB"};
    note(entry, unit, s, t);
    if (compiled([=] { multiTexCoord2f(unit, s, t); }))
        return;
    if (const std::size_t index = unitIndex(entry, unit); index < textureUnits)
        setCoordinate(index, s, t);
}

} // namespace

FunctionPointer headless::detail::multitextureFunction(std::string_view name) {
    if (name == "glActiveTextureARB")
        return reinterpret_cast<FunctionPointer>(&activeTexture);
    if (name == "glClientActiveTextureARB")
        return reinterpret_cast<FunctionPointer>(&clientActiveTexture);
    if (name == "glMultiTexCoord2fARB")
        return reinterpret_cast<FunctionPointer>(&multiTexCoord2f);
    return nullptr;
}
