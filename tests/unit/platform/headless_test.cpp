#include "platform/headless/headless.h"

#include "platform/fsound.h"
#include "platform/wgl_extension.h"
#include "support/test_data.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <vector>

namespace {

/// A window with a context, opened and closed in the order the game uses.
class HeadlessDesktop : public testing::Test {
protected:
    HWND window = nullptr;
    HDC deviceContext = nullptr;
    HGLRC renderingContext = nullptr;

    HeadlessDesktop() {
        headless::reset();
        open();
    }
    ~HeadlessDesktop() override { headless::reset(); }

    void open() {
        WNDCLASSA windowClass{};
        windowClass.lpfnWndProc = DefWindowProcA;
        windowClass.lpszClassName = "OpenGL";
        RegisterClassA(&windowClass);
        window = CreateWindowExA(0, "OpenGL", "", WS_POPUP, 0, 0, 640, 480, nullptr, nullptr, nullptr, nullptr);
        deviceContext = GetDC(window);
        const PIXELFORMATDESCRIPTOR format{};
        SetPixelFormat(deviceContext, ChoosePixelFormat(deviceContext, &format), &format);
        renderingContext = wglCreateContext(deviceContext);
        wglMakeCurrent(deviceContext, renderingContext);
    }

    /// What waits, taken.
    static std::vector<UINT> drain() {
        std::vector<UINT> taken;
        MSG message{};
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            taken.push_back(message.message);
        return taken;
    }
};

const std::array<std::uint8_t, 6> picture{};

GLuint newTexture() {
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_2D, name);
    return name;
}

void bindBuffer(GLuint name) {
    getExtension<PFNGLBINDBUFFERARBPROC>("glBindBufferARB")(GL_ARRAY_BUFFER_ARB, name);
}

/// Bound and filled with a triangle, for glDrawArrays to read.
GLuint newBuffer() {
    const std::array<double, 9> triangle = {0, 0, 0, 1, 0, 0, 0, 7, 0};
    GLuint name = 0;
    getExtension<PFNGLGENBUFFERSARBPROC>("glGenBuffersARB")(1, &name);
    bindBuffer(name);
    getExtension<PFNGLBUFFERDATAARBPROC>("glBufferDataARB")(GL_ARRAY_BUFFER_ARB, sizeof triangle, triangle.data(),
                                                            GL_STATIC_DRAW_ARB);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_DOUBLE, 0, nullptr);
    return name;
}

void deleteWhatIsUsed() {
    const GLuint texture = newTexture();
    glDeleteTextures(1, &texture);
    const GLuint buffer = newBuffer();
    getExtension<PFNGLDELETEBUFFERSARBPROC>("glDeleteBuffersARB")(1, &buffer);
}

} // namespace

TEST_F(HeadlessDesktop, HandlesAreCountedAndStaleOnesNoticed) {
    EXPECT_EQ(headless::openHandles(), (headless::OpenHandles{1, 1, 1, 1, 0}));
    headless::tapKey(VK_F2);
    wglMakeCurrent(nullptr, nullptr);
    wglDeleteContext(renderingContext);
    ReleaseDC(window, deviceContext);
    DestroyWindow(window);
    UnregisterClassA("OpenGL", nullptr);
    EXPECT_EQ(headless::openHandles(), headless::OpenHandles{});
    EXPECT_TRUE(drain().empty()) << "a window takes its messages along";
    EXPECT_TRUE(headless::problems().empty());
    EXPECT_FALSE(DestroyWindow(window) || wglDeleteContext(renderingContext) || SwapBuffers(nullptr));
    EXPECT_EQ(ReleaseDC(window, deviceContext), 0);
    EXPECT_EQ(headless::problems().size(), 4u);
    open();
    DestroyWindow(window);
    EXPECT_EQ(headless::problems().size(), 5u) << "its device context is not released";
}

TEST_F(HeadlessDesktop, AShownWindowHearsOfItselfAndTheCursorAndQuitComesLast) {
    SetCursorPos(300, 300);
    EXPECT_TRUE(drain().empty()) << "no window to move over yet";
    ShowWindow(window, SW_SHOW);
    PostQuitMessage(3);
    headless::moveMouse(-400, 25);
    EXPECT_EQ(headless::cursor().x, -100) << "no screen edge stops it";
    SetCursorPos(300, 300);
    SetCursorPos(300, 300);
    headless::keyDown('W');
    EXPECT_EQ(drain(), (std::vector<UINT>{WM_ACTIVATE, WM_SIZE, WM_MOUSEMOVE, WM_MOUSEMOVE, WM_KEYDOWN, WM_QUIT}));
    EXPECT_TRUE(drain().empty());
    // A loop that neither draws nor ends is stopped.
    for (unsigned i = 4; i < headless::idleLimit; ++i)
        ASSERT_TRUE(drain().empty()) << i;
    EXPECT_EQ(drain(), std::vector<UINT>{WM_QUIT});
    EXPECT_EQ(headless::problems().size(), 1u);
}

TEST_F(HeadlessDesktop, EveryContextStartsAfreshAndSwitchesItsUnitsApart) {
    const auto activeTexture = getExtension<PFNGLACTIVETEXTUREARBPROC>("glActiveTextureARB");
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glEnable(GL_BLEND);
    activeTexture(GL_TEXTURE1_ARB);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, texture);
    activeTexture(GL_TEXTURE0_ARB);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    const auto& units = headless::glState().settings.units;
    EXPECT_TRUE(units[0].texture == 0 && units[1].texture == texture);
    wglMakeCurrent(deviceContext, wglCreateContext(deviceContext));
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_EQ(headless::glState().textures.size(), 1u) << "texture 0 alone";
    wglMakeCurrent(deviceContext, renderingContext);
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
    wglDeleteContext(renderingContext);
    EXPECT_FALSE(glIsEnabled(GL_BLEND)) << "without a context the bare state answers";
}

TEST_F(HeadlessDesktop, EachWrongUseIsAProblem) {
    const std::pair<const char*, std::function<void()>> uses[] = {
        {"vertex outside", [] { glVertex3f(0, 0, 0); }},
        {"end without begin", [] { glEnd(); }},
        {"begin twice", [] { glBegin(GL_LINES), glBegin(GL_LINES); }},
        {"query inside", [] { glBegin(GL_LINES), glIsEnabled(GL_BLEND); }},
        {"pop without push", [] { glPopMatrix(); }},
        {"3 projections", [] { glMatrixMode(GL_PROJECTION), glPushMatrix(), glPushMatrix(); }},
        {"empty box", [] { glOrtho(0, 0, 0, 1, 0, 1); }},
        {"ninth light", [] { glLightfv(GL_LIGHT0 + 8, GL_POSITION, std::array<float, 4>().data()); }},
        {"unknown texture", [] { glBindTexture(GL_TEXTURE_2D, 7); }},
        {"deleted texture", [] { deleteWhatIsUsed(), glBindTexture(GL_TEXTURE_2D, 1); }},
        {"no pixels", [] { glTexImage2D(GL_TEXTURE_2D, 0, 3, 0, 1, 0, GL_RGB, GL_UNSIGNED_BYTE, picture.data()); }},
        {"too wide", [] { gluBuild2DMipmaps(GL_TEXTURE_2D, 3, 16385, 1, GL_RGB, GL_UNSIGNED_BYTE, picture.data()); }},
        {"list in a list", [] { glNewList(1, GL_COMPILE), glNewList(2, GL_COMPILE); }},
        {"vertex of a list outside",
         [] { glNewList(1, GL_COMPILE), glVertex2f(0, 0), glEndList(), glCallLists(1, GL_UNSIGNED_BYTE, "\1"); }},
        {"unknown buffer", [] { bindBuffer(7); }},
        {"short buffer", [] { newBuffer(), glDrawArrays(GL_TRIANGLES, 1, 3); }},
        {"deleted buffer", [] { deleteWhatIsUsed(), glDrawArrays(GL_TRIANGLES, 0, 3); }},
        {"no normals", [] { newBuffer(), glEnableClientState(GL_NORMAL_ARRAY), glDrawArrays(GL_TRIANGLES, 0, 3); }},
    };
    for (const auto& [name, use] : uses) {
        headless::reset();
        use();
        EXPECT_EQ(headless::problems().size(), 1u) << name;
        EXPECT_FALSE(headless::glEnabled(GL_BLEND)) << name;
    }
    headless::reset();
    glPushMatrix();
    glBegin(GL_LINES);
    SwapBuffers(nullptr);
    EXPECT_EQ(headless::problems().size(), 3u) << "matrix, primitive and the missing device context";
}

TEST_F(HeadlessDesktop, AChannelBelongsToTheWaveFileThatWasStartedThereLast) {
    const TestData data;
    data.write("text", "not a sound");
    data.write("first", "RIFF____WAVE");
    data.write("second", "RIFF____WAVEfmt ");
    for (const char* const bad : {"none", "text", "sound"}) // the last is a folder, which opens as a file
        EXPECT_EQ(FSOUND_Stream_Open(bad, 0, 0, 0), nullptr) << bad;
    FSOUND_STREAM* const first = FSOUND_Stream_Open("first", 0, 0, 0);
    FSOUND_STREAM* const second = FSOUND_Stream_Open("second", 0, 0, 0);
    EXPECT_EQ(FSOUND_Stream_Play(1, first), 1);
    FSOUND_Stream_Play(1, second);
    FSOUND_Stream_Stop(first);
    EXPECT_EQ(headless::playingOn(1), "second") << "the first no longer plays there";
    FSOUND_Stream_Play(2, second);
    EXPECT_EQ(headless::playingOn(1) + headless::playingOn(2), "second") << "a stream plays in one place";
    FSOUND_Stream_Stop(second);
    EXPECT_EQ(headless::playingOn(2), "");
    EXPECT_EQ(headless::problems().size(), 0u);
    FSOUND_Stream_Close(first);
    EXPECT_EQ(headless::openHandles().streams, 1u);
    FSOUND_Stream_Close(first);
    EXPECT_EQ(headless::problems().size(), 1u) << "closed twice";
    FSOUND_Close();
    EXPECT_EQ(headless::problems().size(), 2u) << "closed over an open stream";
}
