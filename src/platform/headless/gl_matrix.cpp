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
constexpr std::size_t otherDepth = 2;

using Doubles = std::array<double, 16>;
constexpr Doubles doubleIdentity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

std::vector<GlMatrix>& currentStack() {
    switch (state().settings.matrixMode) {
    case GL_PROJECTION:
        return state().projection;
    case GL_TEXTURE:
        return state().textureMatrix;
    default:
        return state().modelview;
    }
}

template <class Number>
GlMatrix asMatrix(const Number* numbers) {
    GlMatrix matrix{};
    std::transform(numbers, numbers + 16, matrix.begin(), [](Number number) { return static_cast<float>(number); });
    return matrix;
}

void multiply(const GlMatrix& factor) {
    GlMatrix& top = currentStack().back();
    top = multiplied(top, factor);
}

void multiply(const Doubles& factor) {
    multiply(asMatrix(factor.data()));
}

template <class Number>
void noteMatrix(Entry& entry, const Number* numbers) {
    count(entry);
    if (traffic.recording && traffic.replayDepth == 0)
        appendRecord(entry.name, {numbers, numbers + 16});
}

void translate(double x, double y, double z) {
    Doubles matrix = doubleIdentity;
    matrix[12] = x;
    matrix[13] = y;
    matrix[14] = z;
    multiply(matrix);
}

void scale(double x, double y, double z) {
    Doubles matrix = doubleIdentity;
    matrix[0] = x;
    matrix[5] = y;
    matrix[10] = z;
    multiply(matrix);
}

void rotate(double degrees, double x, double y, double z) {
    const double length = std::sqrt(x * x + y * y + z * z);
    if (length == 0)
        return;
    x /= length;
    y /= length;
    z /= length;
    const double angle = degrees * std::numbers::pi / 180;
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const double k = 1 - c;
    multiply(Doubles{x * x * k + c, y * x * k + z * s, x * z * k - y * s, 0, x * y * k - z * s, y * y * k + c,
                     y * z * k + x * s, 0, x * z * k + y * s, y * z * k - x * s, z * z * k + c, 0, 0, 0, 0, 1});
}

void orthographic(double left, double right, double bottom, double top, double zNear, double zFar) {
    Doubles matrix = doubleIdentity;
    matrix[0] = 2 / (right - left);
    matrix[5] = 2 / (top - bottom);
    matrix[10] = -2 / (zFar - zNear);
    matrix[12] = -(right + left) / (right - left);
    matrix[13] = -(top + bottom) / (top - bottom);
    matrix[14] = -(zFar + zNear) / (zFar - zNear);
    multiply(matrix);
}

using Doubles3 = std::array<double, 3>;

Doubles3 cross(const Doubles3& a, const Doubles3& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

Doubles3 normalised(const Doubles3& a) {
    const double length = std::sqrt(a[0] * a[0] + a[1] * a[1] + a[2] * a[2]);
    return length == 0 ? a : Doubles3{a[0] / length, a[1] / length, a[2] / length};
}

} // namespace

GlMatrix headless::detail::multiplied(const GlMatrix& left, const GlMatrix& right) {
    GlMatrix product{};
    for (std::size_t column = 0; column < 4; ++column)
        for (std::size_t row = 0; row < 4; ++row)
            for (std::size_t i = 0; i < 4; ++i)
                product[column * 4 + row] += left[i * 4 + row] * right[column * 4 + i];
    return product;
}

Float4 headless::detail::transformed(const GlMatrix& matrix, const Float4& point) {
    Float4 result{};
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t i = 0; i < 4; ++i)
            result[row] += matrix[i * 4 + row] * point[i];
    return result;
}

void glMatrixMode(GLenum mode) {
    static constinit Entry entry{"glMatrixMode"};
    note(entry, mode);
    if (compiled([=] { glMatrixMode(mode); }) || !outsideBegin(entry))
        return;
    if (mode == GL_MODELVIEW || mode == GL_PROJECTION || mode == GL_TEXTURE)
        state().settings.matrixMode = mode;
    else
        glProblem(entry, "got an unknown mode", GL_INVALID_ENUM);
}

void glLoadIdentity() {
    static constinit Entry entry{"glLoadIdentity"};
    note(entry);
    if (!compiled([] { glLoadIdentity(); }) && outsideBegin(entry))
        currentStack().back() = glIdentity;
}

void glPushMatrix() {
    static constinit Entry entry{"glPushMatrix"};
    note(entry);
    if (compiled([] { glPushMatrix(); }) || !outsideBegin(entry))
        return;
    auto& stack = currentStack();
    if (stack.size() == (&stack == &state().modelview ? modelviewDepth : otherDepth))
        glProblem(entry, "finds the stack full", GL_STACK_OVERFLOW);
    else
        stack.push_back(stack.back());
}

void glPopMatrix() {
    static constinit Entry entry{"glPopMatrix"};
    note(entry);
    if (compiled([] { glPopMatrix(); }) || !outsideBegin(entry))
        return;
    if (currentStack().size() == 1)
        glProblem(entry, "has no glPushMatrix", GL_STACK_UNDERFLOW);
    else
        currentStack().pop_back();
}

void glLoadMatrixf(const GLfloat* m) {
    static constinit Entry entry{"glLoadMatrixf"};
    noteMatrix(entry, m);
    if (!compiled([copy = asMatrix(m)] { glLoadMatrixf(copy.data()); }) && outsideBegin(entry))
        currentStack().back() = asMatrix(m);
}

void glLoadMatrixd(const GLdouble* m) {
    static constinit Entry entry{"glLoadMatrixd"};
    noteMatrix(entry, m);
    if (!compiled([copy = asMatrix(m)] { glLoadMatrixf(copy.data()); }) && outsideBegin(entry))
        currentStack().back() = asMatrix(m);
}

void glMultMatrixf(const GLfloat* m) {
    static constinit Entry entry{"glMultMatrixf"};
    noteMatrix(entry, m);
    if (!compiled([copy = asMatrix(m)] { glMultMatrixf(copy.data()); }) && outsideBegin(entry))
        multiply(asMatrix(m));
}

void glMultMatrixd(const GLdouble* m) {
    static constinit Entry entry{"glMultMatrixd"};
    noteMatrix(entry, m);
    if (!compiled([copy = asMatrix(m)] { glMultMatrixf(copy.data()); }) && outsideBegin(entry))
        multiply(asMatrix(m));
}

void glTranslatef(GLfloat x, GLfloat y, GLfloat z) {
    static constinit Entry entry{"glTranslatef"};
    note(entry, x, y, z);
    if (!compiled([=] { glTranslatef(x, y, z); }) && outsideBegin(entry))
        translate(x, y, z);
}

void glTranslated(GLdouble x, GLdouble y, GLdouble z) {
    static constinit Entry entry{"glTranslated"};
    note(entry, x, y, z);
    if (!compiled([=] { glTranslated(x, y, z); }) && outsideBegin(entry))
        translate(x, y, z);
}

void glScalef(GLfloat x, GLfloat y, GLfloat z) {
    static constinit Entry entry{"glScalef"};
    note(entry, x, y, z);
    if (!compiled([=] { glScalef(x, y, z); }) && outsideBegin(entry))
        scale(x, y, z);
}

void glScaled(GLdouble x, GLdouble y, GLdouble z) {
    static constinit Entry entry{"glScaled"};
    note(entry, x, y, z);
    if (!compiled([=] { glScaled(x, y, z); }) && outsideBegin(entry))
        scale(x, y, z);
}

void glRotatef(GLfloat angle, GLfloat x, GLfloat y, GLfloat z) {
    static constinit Entry entry{"glRotatef"};
    note(entry, angle, x, y, z);
    if (!compiled([=] { glRotatef(angle, x, y, z); }) && outsideBegin(entry))
        rotate(angle, x, y, z);
}

void glOrtho(GLdouble left, GLdouble right, GLdouble bottom, GLdouble top, GLdouble zNear, GLdouble zFar) {
    static constinit Entry entry{"glOrtho"};
    note(entry, left, right, bottom, top, zNear, zFar);
    if (compiled([=] { glOrtho(left, right, bottom, top, zNear, zFar); }) || !outsideBegin(entry))
        return;
    if (left == right || bottom == top || zNear == zFar)
        glProblem(entry, "got an empty box", GL_INVALID_VALUE);
    else
        orthographic(left, right, bottom, top, zNear, zFar);
}

void glFrustum(GLdouble left, GLdouble right, GLdouble bottom, GLdouble top, GLdouble zNear, GLdouble zFar) {
    static constinit Entry entry{"glFrustum"};
    note(entry, left, right, bottom, top, zNear, zFar);
    if (compiled([=] { glFrustum(left, right, bottom, top, zNear, zFar); }) || !outsideBegin(entry))
        return;
    if (zNear <= 0 || zFar <= 0 || left == right || bottom == top || zNear == zFar) {
        glProblem(entry, "got an empty frustum", GL_INVALID_VALUE);
        return;
    }
    multiply(Doubles{2 * zNear / (right - left), 0, 0, 0, 0, 2 * zNear / (top - bottom), 0, 0,
                     (right + left) / (right - left), (top + bottom) / (top - bottom), -(zFar + zNear) / (zFar - zNear),
                     -1, 0, 0, -2 * zFar * zNear / (zFar - zNear), 0});
}

void gluPerspective(GLdouble fovy, GLdouble aspect, GLdouble zNear, GLdouble zFar) {
    static constinit Entry entry{"gluPerspective"};
    note(entry, fovy, aspect, zNear, zFar);
    if (!outsideBegin(entry))
        return;
    const double half = fovy / 2 * std::numbers::pi / 180;
    const double sine = std::sin(half);
    if (sine == 0 || aspect == 0 || zNear == zFar)
        return;
    const double cotangent = std::cos(half) / sine;
    multiply(Doubles{cotangent / aspect, 0, 0, 0, 0, cotangent, 0, 0, 0, 0, -(zFar + zNear) / (zFar - zNear), -1, 0, 0,
                     -2 * zNear * zFar / (zFar - zNear), 0});
}

void gluOrtho2D(GLdouble left, GLdouble right, GLdouble bottom, GLdouble top) {
    static constinit Entry entry{"gluOrtho2D"};
    note(entry, left, right, bottom, top);
    if (outsideBegin(entry))
        orthographic(left, right, bottom, top, -1, 1);
}

void gluLookAt(GLdouble eyeX, GLdouble eyeY, GLdouble eyeZ, GLdouble centerX, GLdouble centerY, GLdouble centerZ,
               GLdouble upX, GLdouble upY, GLdouble upZ) {
    static constinit Entry entry{"gluLookAt"};
    note(entry, eyeX, eyeY, eyeZ, centerX, centerY, centerZ, upX, upY, upZ);
    if (!outsideBegin(entry))
        return;
    const Doubles3 forward = normalised({centerX - eyeX, centerY - eyeY, centerZ - eyeZ});
    const Doubles3 side = normalised(cross(forward, {upX, upY, upZ}));
    const Doubles3 up = cross(side, forward);
    multiply(Doubles{side[0], up[0], -forward[0], 0, side[1], up[1], -forward[1], 0, side[2], up[2], -forward[2], 0, 0,
                     0, 0, 1});
    translate(-eyeX, -eyeY, -eyeZ);
}
