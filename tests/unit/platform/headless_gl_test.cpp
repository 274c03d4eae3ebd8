#include "platform/headless/headless.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <vector>

namespace {

class HeadlessGl : public testing::Test {
protected:
    void SetUp() override { headless::reset(); }
    void TearDown() override { headless::reset(); }

    static std::size_t problemCount() { return headless::problems().size(); }
};

/// Clip coordinates of a point under the current matrices, divided by w.
std::array<float, 3> projected(float x, float y, float z) {
    headless::captureGeometry(true);
    glViewport(0, 0, 2, 2);
    glBegin(GL_POINTS);
    glVertex3f(x, y, z);
    glEnd();
    const auto window = headless::windowPosition(headless::glPrimitives().back(), 0);
    headless::captureGeometry(false);
    return {window[0] - 1, window[1] - 1, window[2] * 2 - 1};
}

template <class Function>
Function entryPoint(const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(wglGetProcAddress(name)));
}

} // namespace

TEST_F(HeadlessGl, PerspectiveMapsThePlanesAndTheFieldOfView) {
    glMatrixMode(GL_PROJECTION);
    gluPerspective(90, 2, 1, 100);
    EXPECT_NEAR(projected(0, 0, -1)[2], -1, 1e-5);
    EXPECT_NEAR(projected(0, 0, -100)[2], 1, 1e-4);
    const auto corner = projected(20, 10, -10);
    EXPECT_NEAR(corner[0], 1, 1e-5);
    EXPECT_NEAR(corner[1], 1, 1e-5);
}

TEST_F(HeadlessGl, LookAtPutsTheEyeAtTheOriginAndTheTargetAhead) {
    gluLookAt(3, 4, 5, 3, 4, -5, 0, 1, 0);
    glMatrixMode(GL_PROJECTION);
    glOrtho(-10, 10, -10, 10, 0, 20);
    const auto target = projected(3, 4, -5);
    EXPECT_NEAR(target[0], 0, 1e-5);
    EXPECT_NEAR(target[1], 0, 1e-5);
    EXPECT_NEAR(target[2], 0, 1e-5) << "ten units ahead of twenty";
    EXPECT_NEAR(projected(4, 4, -5)[0], 0.1, 1e-5) << "right is right";
    EXPECT_NEAR(projected(3, 5, -5)[1], 0.1, 1e-5) << "up is up";
}

TEST_F(HeadlessGl, MatricesMultiplyFromTheRightAndComeBackFromTheStack) {
    glTranslatef(1, 2, 3);
    glPushMatrix();
    glScalef(2, 2, 2);
    glRotatef(90, 0, 0, 1);
    const headless::GlMatrix turned = headless::glState().modelview.back();
    // The x axis, turned, doubled, then moved.
    EXPECT_NEAR(turned[0] + turned[12], 1, 1e-6);
    EXPECT_NEAR(turned[1] + turned[13], 4, 1e-6);
    glPopMatrix();
    std::array<float, 16> back{};
    glGetFloatv(GL_MODELVIEW_MATRIX, back.data());
    EXPECT_EQ(back[12], 1);
    EXPECT_EQ(back[0], 1);
    const std::array<float, 16> moved = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 0, 0, 1};
    glMultMatrixf(moved.data());
    EXPECT_EQ(headless::glState().modelview.back()[12], 6);
    EXPECT_EQ(headless::glState().projection.back(), headless::glIdentity);
}

TEST_F(HeadlessGl, WrongUseIsAProblemAndChangesNothing) {
    glVertex3f(0, 0, 0);
    EXPECT_EQ(problemCount(), 1u);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_OPERATION));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    glEnd();
    glPopMatrix();
    glPopAttrib();
    EXPECT_EQ(problemCount(), 4u);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_OPERATION)) << "the first error stays";
    glBegin(GL_TRIANGLES);
    glEnable(GL_BLEND);
    glTranslatef(1, 0, 0);
    EXPECT_FALSE(headless::glEnabled(GL_BLEND));
    EXPECT_EQ(headless::glState().modelview.back(), headless::glIdentity);
    glEnd();
    EXPECT_EQ(problemCount(), 6u);
    for (int i = 0; i < 31; ++i)
        glPushMatrix();
    EXPECT_EQ(problemCount(), 6u);
    glPushMatrix();
    EXPECT_EQ(problemCount(), 7u) << "the stack has 32 places";
}

TEST_F(HeadlessGl, AFrameThatEndsOutOfBalanceIsAProblem) {
    glPushMatrix();
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    SwapBuffers(nullptr);
    EXPECT_EQ(problemCount(), 3u) << "matrix, attributes and the missing device context";
}

TEST_F(HeadlessGl, AttributesComeBackWithThePop) {
    glEnable(GL_LIGHTING);
    glDepthMask(GL_TRUE);
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glDisable(GL_LIGHTING);
    glDepthMask(GL_FALSE);
    glColor4f(1, 0, 0, 1);
    glPopAttrib();
    EXPECT_TRUE(glIsEnabled(GL_LIGHTING));
    EXPECT_TRUE(headless::glState().settings.depthMask);
    EXPECT_EQ(headless::glState().settings.color, (headless::Float4{1, 1, 1, 1}));
}

TEST_F(HeadlessGl, LightsStandUnderTheMatrixOfTheirMoment) {
    glTranslatef(0, -1000, 0);
    const std::array<float, 4> above = {0, 1000, 0, 1};
    glLightfv(GL_LIGHT0, GL_POSITION, above.data());
    glLoadIdentity();
    EXPECT_EQ(headless::glState().settings.lights[0].position, above);
    EXPECT_EQ(headless::glState().settings.lights[0].eyePosition, (headless::Float4{0, 0, 0, 1}));
}

TEST_F(HeadlessGl, EveryUnitHasItsTextureAndSwitch) {
    const auto activeTexture = entryPoint<PFNGLACTIVETEXTUREARBPROC>("glActiveTextureARB");
    const auto multiTexCoord = entryPoint<PFNGLMULTITEXCOORD2FARBPROC>("glMultiTexCoord2fARB");
    ASSERT_NE(activeTexture, nullptr);
    std::array<GLuint, 2> names{};
    glGenTextures(2, names.data());
    EXPECT_NE(names[0], names[1]);
    glBindTexture(GL_TEXTURE_2D, names[0]);
    activeTexture(GL_TEXTURE1_ARB);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, names[1]);
    multiTexCoord(GL_TEXTURE1_ARB, 3, 4);
    activeTexture(GL_TEXTURE0_ARB);
    const auto& units = headless::glState().settings.units;
    EXPECT_EQ(units[0].texture, names[0]);
    EXPECT_EQ(units[1].texture, names[1]);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_TRUE(units[1].enabled);
    EXPECT_EQ(units[1].coordinate[1], 4);
    activeTexture(GL_TEXTURE0_ARB + 31);
    EXPECT_EQ(problemCount(), 1u);
}

TEST_F(HeadlessGl, TexturesKeepWhatWasUploaded) {
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_2D, name);
    const std::array<std::uint8_t, 6> pixels = {1, 2, 3, 4, 5, 6};
    glTexImage2D(GL_TEXTURE_2D, 0, 3, 2, 1, 0, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    EXPECT_EQ(gluBuild2DMipmaps(GL_TEXTURE_2D, GL_RGB, 2, 1, GL_RGB, GL_UNSIGNED_BYTE, pixels.data()), 0);
    const headless::GlTexture& texture = headless::glState().textures.at(name);
    EXPECT_EQ(texture.pixels, std::vector<std::uint8_t>(pixels.begin(), pixels.end()));
    EXPECT_EQ(texture.minFilter, GL_LINEAR);
    EXPECT_TRUE(texture.mipmaps);
    glDeleteTextures(1, &name);
    EXPECT_EQ(headless::glState().settings.units[0].texture, 0u);
    EXPECT_EQ(problemCount(), 0u);
    glBindTexture(GL_TEXTURE_2D, name);
    EXPECT_EQ(problemCount(), 1u) << "the name is gone";
}

TEST_F(HeadlessGl, ListsRunAgainAndCountAsGeometryOnly) {
    const GLuint base = glGenLists(256);
    glNewList(base + 'A', GL_COMPILE);
    glBegin(GL_QUADS);
    for (int i = 0; i < 4; ++i)
        glVertex2i(i, i);
    glEnd();
    glTranslatef(10, 0, 0);
    glEndList();
    EXPECT_EQ(headless::glState().modelview.back()[12], 0) << "compiling executes nothing";
    headless::recordGl(true);
    headless::captureGeometry(true);
    glListBase(base);
    glCallLists(2, GL_UNSIGNED_BYTE, "AA");
    EXPECT_EQ(headless::glState().modelview.back()[12], 20);
    EXPECT_EQ(headless::glPrimitives().size(), 2u);
    ASSERT_EQ(headless::glRecords().size(), 2u);
    EXPECT_EQ(headless::glRecords()[1].name, "glCallLists");
    EXPECT_EQ(headless::glRecords()[1].arguments, (std::vector<double>{2, GL_UNSIGNED_BYTE, 'A', 'A'}));
    EXPECT_EQ(headless::glCalls("glVertex2i"), 4u) << "as often as the program called it";
    glDeleteLists(base, 256);
    glCallLists(1, GL_UNSIGNED_BYTE, "A");
    EXPECT_EQ(headless::glPrimitives().size(), 2u);
    EXPECT_TRUE(headless::glState().lists.empty());
}

TEST_F(HeadlessGl, ArraysInMemoryDrawTheirVertices) {
    const std::array<double, 9> positions = {0, 0, 0, 1, 0, 0, 0, 1, 0};
    headless::captureGeometry(true);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_DOUBLE, 0, positions.data());
    glDrawArrays(GL_TRIANGLES, 0, 3);
    ASSERT_EQ(headless::glPrimitives().size(), 1u);
    EXPECT_EQ(headless::glPrimitives()[0].vertices[2], (std::array<float, 3>{0, 1, 0}));
    glDisableClientState(GL_VERTEX_ARRAY);
    glDrawArrays(GL_TRIANGLES, 0, 3);
    EXPECT_EQ(headless::glPrimitives().size(), 1u) << "no array, no picture";
}

TEST_F(HeadlessGl, BuffersAreReadOnlyWithinTheirSize) {
    const auto generate = entryPoint<PFNGLGENBUFFERSARBPROC>("glGenBuffersARB");
    const auto bind = entryPoint<PFNGLBINDBUFFERARBPROC>("glBindBufferARB");
    const auto fill = entryPoint<PFNGLBUFFERDATAARBPROC>("glBufferDataARB");
    const auto erase = entryPoint<PFNGLDELETEBUFFERSARBPROC>("glDeleteBuffersARB");
    GLuint buffer = 0;
    generate(1, &buffer);
    bind(GL_ARRAY_BUFFER_ARB, buffer);
    const std::array<double, 9> positions = {0, 0, 0, 1, 0, 0, 0, 7, 0};
    fill(GL_ARRAY_BUFFER_ARB, sizeof positions, positions.data(), GL_STATIC_DRAW_ARB);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_DOUBLE, 0, nullptr);
    bind(GL_ARRAY_BUFFER_ARB, 0);
    headless::captureGeometry(true);
    glDrawArrays(GL_TRIANGLES, 0, 3);
    ASSERT_EQ(headless::glPrimitives().size(), 1u);
    EXPECT_EQ(headless::glPrimitives()[0].vertices[2][1], 7);
    EXPECT_EQ(problemCount(), 0u);
    glDrawArrays(GL_TRIANGLES, 0, 4);
    EXPECT_EQ(problemCount(), 1u) << "the fourth vertex is not there";
    erase(1, &buffer);
    glDrawArrays(GL_TRIANGLES, 0, 3);
    EXPECT_EQ(problemCount(), 2u) << "nor is anything after the deletion";
}

TEST_F(HeadlessGl, EntryPointsComeWithTheirExtensions) {
    headless::setGlExtensions("GL_ARB_multitexture");
    EXPECT_EQ(wglGetProcAddress("glGenBuffersARB"), nullptr);
    EXPECT_EQ(wglGetProcAddress("wglSwapIntervalEXT"), nullptr);
    EXPECT_NE(wglGetProcAddress("glActiveTextureARB"), nullptr);
    EXPECT_EQ(wglGetProcAddress("glNoSuchThingARB"), nullptr);
    EXPECT_STREQ(reinterpret_cast<const char*>(glGetString(GL_EXTENSIONS)), "GL_ARB_multitexture");
}

TEST_F(HeadlessGl, EveryContextStartsAfresh) {
    WNDCLASSA windowClass{};
    windowClass.lpszClassName = "OpenGL";
    RegisterClassA(&windowClass);
    const HWND window = CreateWindowExA(0, "OpenGL", "", WS_POPUP, 0, 0, 64, 64, nullptr, nullptr, nullptr, nullptr);
    const HDC deviceContext = GetDC(window);
    const PIXELFORMATDESCRIPTOR format{};
    SetPixelFormat(deviceContext, 1, &format);
    const HGLRC first = wglCreateContext(deviceContext);
    wglMakeCurrent(deviceContext, first);
    GLuint name = 0;
    glGenTextures(1, &name);
    glEnable(GL_BLEND);
    entryPoint<BOOL (*)(int)>("wglSwapIntervalEXT")(0);
    EXPECT_EQ(headless::swapInterval(), 0);

    const HGLRC second = wglCreateContext(deviceContext);
    wglMakeCurrent(deviceContext, second);
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_FALSE(glIsTexture(name));
    EXPECT_EQ(headless::swapInterval(), 1);
    wglMakeCurrent(deviceContext, first);
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
    wglDeleteContext(first);
    EXPECT_FALSE(glIsEnabled(GL_BLEND)) << "without a context the bare state answers";
}

TEST_F(HeadlessGl, CallsAreCountedAndRecordedWithTheirNumbers) {
    const std::array<float, 4> diffuse = {0.25F, 0.5F, 0.75F, 1};
    glMaterialfv(GL_FRONT, GL_DIFFUSE, diffuse.data());
    EXPECT_TRUE(headless::glRecords().empty());
    headless::recordGl(true);
    glMaterialfv(GL_FRONT, GL_DIFFUSE, diffuse.data());
    const double material = 5;
    glVertexPointer(3, GL_DOUBLE, 0, &material);
    ASSERT_EQ(headless::glRecords().size(), 2u);
    EXPECT_EQ(headless::glRecords()[0].arguments, (std::vector<double>{GL_FRONT, GL_DIFFUSE, 0.25, 0.5, 0.75, 1}));
    EXPECT_EQ(headless::glRecords()[1].arguments[3], static_cast<double>(reinterpret_cast<std::uintptr_t>(&material)));
    EXPECT_EQ(headless::glCalls("glMaterialfv"), 2u);
    headless::reset();
    EXPECT_EQ(headless::glCalls("glMaterialfv"), 0u);
    EXPECT_TRUE(headless::glRecords().empty());
    glFlush();
    EXPECT_EQ(headless::glCalls("glFlush"), 1u) << "counters survive a reset";
}
