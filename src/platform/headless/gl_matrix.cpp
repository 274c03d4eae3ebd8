// Matrix stacks, in single precision as the real ones are.

#include "platform/headless/gl_internal.h"

#include <algorithm>
#include <cmath>
#include <numbers>

using namespace headless;
using namespace headless::detail;

namespace {

/// Depths that every implementation offers at least.
constexpr std::size_t modelviewDepth = 32;
constexpr std::size_t projectionDepth = 2;

using Doubles = std::array<double, 16>;
using Doubles3 = std::array<double, 3>;

std::vector<GlMatrix>& currentStack() {
    return state().settings.matrixMode == GL_PROJECTION ? state().projection : state().modelview;
}

void multiply(const GlMatrix& factor) {
    GlMatrix& top = currentStack().back();
    GlMatrix product{};
    for (std::size_t column = 0; column < 4; ++column)
        for (std::size_t row = 0; row < 4; ++row)
            for (std::size_t i = 0; i < 4; ++i)
                product[column * 4 + row] += top[i * 4 + row] * factor[column * 4 + i];
    top = product;
}

void multiply(const Doubles& factor) {
    GlMatrix rounded{};
    std::transform(factor.begin(), factor.end(), rounded.begin(), [](double n) { return static_cast<float>(n); });
    multiply(rounded);
}

void translate(double x, double y, double z) {
    multiply(Doubles{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1});
}

void setMode(GLenum mode) {
    if (mode == GL_MODELVIEW || mode == GL_PROJECTION)
        state().settings.matrixMode = mode;
    else
        glProblem("got a mode that is not kept");
}

void push() {
    auto& stack = currentStack();
    if (stack.size() == (&stack == &state().modelview ? modelviewDepth : projectionDepth))
        glProblem("finds the stack full");
    else
        stack.push_back(stack.back());
}

void pop() {
    if (currentStack().size() == 1)
        glProblem("has no glPushMatrix");
    else
        currentStack().pop_back();
}

void orthographic(double left, double right, double bottom, double top, double zNear, double zFar) {
    if (left == right || bottom == top || zNear == zFar) {
        glProblem("got an empty box");
        return;
    }
    const double width = right - left;
    const double height = top - bottom;
    const double depth = zFar - zNear;
    multiply(Doubles{2 / width, 0, 0, 0, 0, 2 / height, 0, 0, 0, 0, -2 / depth, 0, -(right + left) / width,
                     -(top + bottom) / height, -(zFar + zNear) / depth, 1});
}

void perspective(double degrees, double aspect, double zNear, double zFar) {
    const double half = degrees / 2 * std::numbers::pi / 180;
    if (std::sin(half) == 0 || aspect == 0 || zNear == zFar) {
        glProblem("got an empty frustum");
        return;
    }
    const double cotangent = std::cos(half) / std::sin(half);
    const double depth = zFar - zNear;
    multiply(Doubles{cotangent / aspect, 0, 0, 0, 0, cotangent, 0, 0, 0, 0, -(zFar + zNear) / depth, -1, 0, 0,
                     -2 * zNear * zFar / depth, 0});
}

Doubles3 cross(const Doubles3& a, const Doubles3& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

Doubles3 normalised(const Doubles3& a) {
    const double length = std::sqrt(a[0] * a[0] + a[1] * a[1] + a[2] * a[2]);
    return length == 0 ? a : Doubles3{a[0] / length, a[1] / length, a[2] / length};
}

void lookAt(const Doubles3& eye, const Doubles3& centre, const Doubles3& upwards) {
    const Doubles3 f = normalised({centre[0] - eye[0], centre[1] - eye[1], centre[2] - eye[2]});
    const Doubles3 s = normalised(cross(f, upwards));
    const Doubles3 u = cross(s, f);
    multiply(Doubles{s[0], u[0], -f[0], 0, s[1], u[1], -f[1], 0, s[2], u[2], -f[2], 0, 0, 0, 0, 1});
    translate(-eye[0], -eye[1], -eye[2]);
}

} // namespace

Float4 headless::detail::transformed(const GlMatrix& matrix, const Float4& point) {
    Float4 result{};
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t i = 0; i < 4; ++i)
            result[row] += matrix[i * 4 + row] * point[i];
    return result;
}

void glMatrixMode(GLenum mode) {
    listed("glMatrixMode", std::tuple(mode), [=] { setMode(mode); });
}

void glLoadIdentity() {
    listed("glLoadIdentity", std::tuple(), [] { currentStack().back() = glIdentity; });
}

void glPushMatrix() {
    listed("glPushMatrix", std::tuple(), [] { push(); });
}

void glPopMatrix() {
    listed("glPopMatrix", std::tuple(), [] { pop(); });
}

void glMultMatrixf(const GLfloat* m) {
    GlMatrix factor{};
    std::copy_n(m, factor.size(), factor.begin());
    listed("glMultMatrixf", std::tuple(factor), [=] { multiply(factor); });
}

void glTranslatef(GLfloat x, GLfloat y, GLfloat z) {
    listed("glTranslatef", std::tuple(x, y, z), [=] { translate(x, y, z); });
}

void glOrtho(GLdouble left, GLdouble right, GLdouble bottom, GLdouble top, GLdouble zNear, GLdouble zFar) {
    listed("glOrtho", std::tuple(left, right, bottom, top, zNear, zFar),
           [=] { orthographic(left, right, bottom, top, zNear, zFar); });
}

void gluPerspective(GLdouble fovy, GLdouble aspect, GLdouble zNear, GLdouble zFar) {
    immediate("gluPerspective", std::tuple(fovy, aspect, zNear, zFar), [=] { perspective(fovy, aspect, zNear, zFar); });
}

void gluLookAt(GLdouble eyeX, GLdouble eyeY, GLdouble eyeZ, GLdouble centerX, GLdouble centerY, GLdouble centerZ,
               GLdouble upX, GLdouble upY, GLdouble upZ) {
    const Doubles3 eye{eyeX, eyeY, eyeZ};
    const Doubles3 centre{centerX, centerY, centerZ};
    const Doubles3 upwards{upX, upY, upZ};
    immediate("gluLookAt", std::tuple(eye, centre, upwards), [=] { lookAt(eye, centre, upwards); });
}
