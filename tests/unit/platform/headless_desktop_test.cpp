#include "platform/headless/headless.h"

#include <gtest/gtest.h>

namespace {

std::vector<MSG> dispatched;

LRESULT CALLBACK recordingProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    dispatched.push_back({window, message, wParam, lParam, 0, {}});
    if (message == WM_CLOSE) {
        PostQuitMessage(5);
        return 0;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

/// A window with a context, opened and closed in the order the game uses.
struct Opened {
    HWND window = nullptr;
    HDC deviceContext = nullptr;
    HGLRC renderingContext = nullptr;
};

Opened open() {
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = recordingProcedure;
    windowClass.lpszClassName = "OpenGL";
    RegisterClassA(&windowClass);
    RECT outer{0, 0, 640, 480};
    AdjustWindowRectEx(&outer, WS_OVERLAPPEDWINDOW, FALSE, 0);
    Opened opened;
    opened.window = CreateWindowExA(0, "OpenGL", "Test", WS_OVERLAPPEDWINDOW, 0, 0, outer.right - outer.left,
                                    outer.bottom - outer.top, nullptr, nullptr, nullptr, nullptr);
    opened.deviceContext = GetDC(opened.window);
    const PIXELFORMATDESCRIPTOR format{};
    SetPixelFormat(opened.deviceContext, ChoosePixelFormat(opened.deviceContext, &format), &format);
    opened.renderingContext = wglCreateContext(opened.deviceContext);
    wglMakeCurrent(opened.deviceContext, opened.renderingContext);
    return opened;
}

void close(const Opened& opened) {
    wglMakeCurrent(nullptr, nullptr);
    wglDeleteContext(opened.renderingContext);
    ReleaseDC(opened.window, opened.deviceContext);
    DestroyWindow(opened.window);
    UnregisterClassA("OpenGL", nullptr);
}

/// Everything that waits, dispatched; the messages taken.
std::vector<UINT> drain() {
    std::vector<UINT> taken;
    MSG message{};
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        taken.push_back(message.message);
        DispatchMessageA(&message);
    }
    return taken;
}

class HeadlessDesktop : public testing::Test {
protected:
    void SetUp() override {
        headless::reset();
        dispatched.clear();
    }
    void TearDown() override { headless::reset(); }
};

} // namespace

TEST_F(HeadlessDesktop, AWindowOpensClosesAndLeavesNothingBehind) {
    const Opened opened = open();
    ASSERT_NE(headless::window(), nullptr);
    EXPECT_EQ(headless::window()->clientWidth, 640);
    EXPECT_EQ(headless::window()->clientHeight, 480);
    EXPECT_EQ(headless::openHandles(), (headless::OpenHandles{1, 1, 1, 1, 0}));
    close(opened);
    EXPECT_EQ(headless::openHandles(), headless::OpenHandles{});
    EXPECT_TRUE(headless::problems().empty());
}

TEST_F(HeadlessDesktop, StaleAndForeignHandlesAreNoticed) {
    const Opened opened = open();
    close(opened);
    EXPECT_FALSE(DestroyWindow(opened.window));
    EXPECT_FALSE(wglDeleteContext(opened.renderingContext));
    EXPECT_EQ(ReleaseDC(opened.window, opened.deviceContext), 0);
    EXPECT_FALSE(SwapBuffers(nullptr));
    EXPECT_EQ(headless::problems().size(), 4u);
}

TEST_F(HeadlessDesktop, AShownWindowHearsOfItsActivationAndSize) {
    const Opened opened = open();
    EXPECT_TRUE(drain().empty());
    ShowWindow(opened.window, SW_SHOW);
    drain();
    ASSERT_EQ(dispatched.size(), 2u);
    EXPECT_EQ(dispatched[0].message, WM_ACTIVATE);
    EXPECT_EQ(dispatched[0].wParam, MAKEWPARAM(WA_ACTIVE, 0));
    EXPECT_EQ(dispatched[1].message, WM_SIZE);
    EXPECT_EQ(dispatched[1].lParam, MAKELPARAM(640, 480));
}

TEST_F(HeadlessDesktop, QuitComesBehindTheMessagesThatWait) {
    open();
    headless::closeWindow();
    headless::keyDown('W');
    EXPECT_EQ(drain(), (std::vector<UINT>{WM_SYSCOMMAND, WM_KEYDOWN, WM_QUIT}));
    EXPECT_TRUE(drain().empty());
    PostQuitMessage(3);
    MSG message{};
    ASSERT_TRUE(PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.wParam, 3u);
}

TEST_F(HeadlessDesktop, ADestroyedWindowTakesItsMessagesAlong) {
    const Opened opened = open();
    headless::tapKey(VK_F2);
    close(opened);
    EXPECT_TRUE(drain().empty());
    EXPECT_TRUE(dispatched.empty());
}

TEST_F(HeadlessDesktop, TheCursorsOwnMovesComeBackAsMessages) {
    const Opened opened = open();
    SetCursorPos(300, 300);
    EXPECT_TRUE(drain().empty()) << "no window to move over yet";
    ShowWindow(opened.window, SW_SHOW);
    drain();
    headless::moveMouse(-400, 25);
    POINT at{};
    GetCursorPos(&at);
    EXPECT_EQ(at.x, -100);
    EXPECT_EQ(at.y, 325);
    SetCursorPos(300, 300);
    SetCursorPos(300, 300);
    EXPECT_EQ(drain(), (std::vector<UINT>{WM_MOUSEMOVE, WM_MOUSEMOVE}));
}

TEST_F(HeadlessDesktop, OrderedFailuresHappenOnceAfterTheOrderedSuccesses) {
    headless::failCall(headless::Call::getDC, 1, 1);
    headless::failCall(headless::Call::releaseCurrent);
    const Opened opened = open();
    EXPECT_NE(opened.deviceContext, nullptr);
    EXPECT_EQ(GetDC(opened.window), nullptr);
    const HDC second = GetDC(opened.window);
    EXPECT_NE(second, nullptr);
    EXPECT_FALSE(wglMakeCurrent(nullptr, nullptr));
    EXPECT_TRUE(wglMakeCurrent(nullptr, nullptr));
    EXPECT_EQ(headless::openHandles().deviceContexts, 2u);
}

TEST_F(HeadlessDesktop, TheDisplayModeChangesFailsAndComesBack) {
    DEVMODEA mode{sizeof(DEVMODEA), DM_PELSWIDTH | DM_PELSHEIGHT | DM_BITSPERPEL, 16, 800, 600};
    headless::failCall(headless::Call::changeDisplaySettings);
    EXPECT_EQ(ChangeDisplaySettingsA(&mode, CDS_FULLSCREEN), DISP_CHANGE_BADMODE);
    EXPECT_EQ(headless::displayMode().width, 1920u);
    EXPECT_EQ(ChangeDisplaySettingsA(&mode, CDS_FULLSCREEN), DISP_CHANGE_SUCCESSFUL);
    EXPECT_EQ(headless::displayMode().height, 600u);
    EXPECT_EQ(headless::displayMode().bits, 16u);
    ChangeDisplaySettingsA(nullptr, 0);
    EXPECT_EQ(headless::displayMode().width, 1920u);
}

TEST_F(HeadlessDesktop, BoxesAreAnsweredAsScriptedElseAgreedTo) {
    headless::answerNextBox(IDNO);
    EXPECT_EQ(MessageBoxA(nullptr, "Use it?", "GL", MB_YESNO | MB_ICONEXCLAMATION), IDNO);
    EXPECT_EQ(MessageBoxA(nullptr, "Use it?", "GL", MB_YESNO | MB_ICONEXCLAMATION), IDYES);
    EXPECT_EQ(MessageBoxA(nullptr, "Gone", "ERROR", MB_OK | MB_ICONSTOP), IDOK);
    ASSERT_EQ(headless::messageBoxes().size(), 3u);
    EXPECT_EQ(headless::messageBoxes()[2].text, "Gone");
    EXPECT_EQ(headless::messageBoxes()[2].caption, "ERROR");
    EXPECT_EQ(headless::messageBoxes()[0].type, MB_YESNO | MB_ICONEXCLAMATION);
}

TEST_F(HeadlessDesktop, TheTickMovesByHandAndWraps) {
    headless::setTick(0xFFFFFFF0u);
    EXPECT_EQ(GetTickCount(), 0xFFFFFFF0u);
    headless::advance(32);
    EXPECT_EQ(GetTickCount(), 16u);
}

TEST_F(HeadlessDesktop, HooksDriveALoopFromInside) {
    const Opened opened = open();
    headless::setFrameDuration(16);
    std::vector<DWORD> ticks;
    headless::onFrame([&] {
        ticks.push_back(GetTickCount());
        if (ticks.size() == 3)
            headless::closeWindow();
    });
    bool started = false;
    headless::onIdle([&] {
        if (!started)
            headless::tapKey('T');
        started = true;
    });
    MSG message{};
    while (message.message != WM_QUIT) {
        while (message.message != WM_QUIT && PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&message);
        if (message.message != WM_QUIT)
            SwapBuffers(opened.deviceContext);
    }
    EXPECT_EQ(ticks, (std::vector<DWORD>{16, 32, 48}));
    EXPECT_EQ(headless::frameCount(), 3u);
    ASSERT_GE(dispatched.size(), 2u);
    EXPECT_EQ(dispatched[0].wParam, static_cast<WPARAM>('T'));
}

TEST_F(HeadlessDesktop, ALoopThatNeitherDrawsNorEndsIsStopped) {
    open();
    headless::minimiseWindow();
    MSG message{};
    std::uint64_t looks = 0;
    while (message.message != WM_QUIT && looks < 10 * headless::idleLimit) {
        PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);
        ++looks;
    }
    EXPECT_EQ(message.message, WM_QUIT);
    EXPECT_FALSE(headless::problems().empty());
}

TEST_F(HeadlessDesktop, ResetForgetsEverything) {
    open();
    ShowWindow(nullptr, SW_SHOW);
    ShowCursor(FALSE);
    headless::failCall(headless::Call::registerClass);
    headless::answerNextBox(IDNO);
    headless::onFrame([] { FAIL() << "a hook of an earlier scenario"; });
    headless::keyDown('A');
    headless::setGlExtensions("");
    PostQuitMessage(1);
    headless::reset();

    EXPECT_EQ(headless::openHandles(), headless::OpenHandles{});
    EXPECT_TRUE(headless::problems().empty());
    EXPECT_EQ(headless::cursorCount(), 0);
    EXPECT_FALSE(headless::quitPosted());
    EXPECT_TRUE(drain().empty());
    EXPECT_EQ(MessageBoxA(nullptr, "", "", MB_YESNO), IDYES);
    const Opened opened = open();
    EXPECT_TRUE(SwapBuffers(opened.deviceContext));
    EXPECT_NE(wglGetProcAddress("glGenBuffersARB"), nullptr);
}

TEST_F(HeadlessDesktop, RefusedAndDefaultedMessagesCanBeTold) {
    open();
    headless::post(WM_SYSCOMMAND, SC_MONITORPOWER);
    drain();
    EXPECT_EQ(headless::defaultedMessages(), std::vector<UINT>{WM_SYSCOMMAND});
    EXPECT_FALSE(headless::quitPosted());
    headless::closeWindow();
    drain();
    EXPECT_TRUE(headless::quitPosted()) << "SC_CLOSE becomes WM_CLOSE by default";
}
