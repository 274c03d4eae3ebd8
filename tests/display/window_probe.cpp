// A program of the game's shape without the game: it opens a window and a context as the game does, closes both and
// opens them again in full screen, and writes one line for everything the desktop tells it. Escape or a quit message
// ends it. The display tests drive it with real keys and a real mouse; F5 makes a tap on a touch screen, which no
// virtual display has.

#include "platform/fsound.h"
#include "platform/gl.h"
#include "platform/win32.h"

#include <SDL.h>

#include <cstdio>
#include <cstdlib>
#include <initializer_list>

namespace {

constexpr int width = 1024;
constexpr int height = 768;
/// Where the cursor is put back to after each motion.
constexpr int anchor = 300;
/// Frames longer than this are told of at any time, ms.
constexpr DWORD longFrame = 250;

struct Opened {
    HWND window = nullptr;
    HDC deviceContext = nullptr;
    HGLRC renderingContext = nullptr;
};

bool escape = false;
bool active = true;

void say(const char* what, long long first, long long second) {
    std::printf("%s %lld %lld\n", what, first, second);
    std::fflush(stdout);
}

/// What SDL makes of a tap besides its touch events.
void tapTouchScreen() {
    for (const bool down : {true, false}) {
        SDL_Event event{};
        event.type = down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
        event.button.which = SDL_TOUCH_MOUSEID;
        event.button.button = SDL_BUTTON_LEFT;
        event.button.state = down ? SDL_PRESSED : SDL_RELEASED;
        SDL_PushEvent(&event);
    }
    SDL_Event motion{};
    motion.type = SDL_MOUSEMOTION;
    motion.motion.which = SDL_TOUCH_MOUSEID;
    motion.motion.xrel = 123;
    SDL_PushEvent(&motion);
}

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CLOSE:
        PostQuitMessage(7);
        return 0;
    case WM_SIZE:
        say("size", LOWORD(lParam), HIWORD(lParam));
        glViewport(0, 0, LOWORD(lParam), HIWORD(lParam));
        return 0;
    case WM_ACTIVATE:
        active = HIWORD(wParam) == 0;
        say("activate", LOWORD(wParam), HIWORD(wParam));
        say("tick", LOWORD(wParam), GetTickCount());
        return 0;
    case WM_KEYDOWN:
        escape = escape || wParam == static_cast<WPARAM>(VK_ESCAPE);
        if (wParam == static_cast<WPARAM>(VK_F5))
            tapTouchScreen();
        say("down", static_cast<long long>(wParam), 0);
        return 1;
    case WM_KEYUP:
        say("up", static_cast<long long>(wParam), 0);
        return 1;
    case WM_SYSKEYDOWN:
        say("sysdown", static_cast<long long>(wParam), 0);
        break;
    case WM_MOUSEMOVE: {
        POINT at{};
        GetCursorPos(&at);
        if (at.x != anchor || at.y != anchor)
            say("move", at.x - anchor, at.y - anchor);
        SetCursorPos(anchor, anchor);
        return 1;
    }
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
        say("button", message == WM_LBUTTONDOWN ? 1 : 0, 0);
        return 1;
    default:
        break;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

Opened open(bool fullscreen) {
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = procedure;
    windowClass.lpszClassName = "Probe";
    if (RegisterClassA(&windowClass) == 0)
        std::exit(10);
    DEVMODEA mode{sizeof(DEVMODEA), DM_PELSWIDTH | DM_PELSHEIGHT | DM_BITSPERPEL, 32, width, height};
    if (fullscreen && ChangeDisplaySettingsA(&mode, CDS_FULLSCREEN) != DISP_CHANGE_SUCCESSFUL)
        std::exit(11);
    const DWORD style = fullscreen ? WS_POPUP : WS_OVERLAPPEDWINDOW;
    RECT outer{0, 0, width, height};
    AdjustWindowRectEx(&outer, style, FALSE, 0);
    Opened opened;
    opened.window = CreateWindowExA(0, "Probe", "Window probe", style, 0, 0, outer.right - outer.left,
                                    outer.bottom - outer.top, nullptr, nullptr, nullptr, nullptr);
    opened.deviceContext = GetDC(opened.window);
    const PIXELFORMATDESCRIPTOR format{};
    const int index = ChoosePixelFormat(opened.deviceContext, &format);
    SetPixelFormat(opened.deviceContext, index, &format);
    opened.renderingContext = wglCreateContext(opened.deviceContext);
    if (!wglMakeCurrent(opened.deviceContext, opened.renderingContext))
        std::exit(12);
    ShowWindow(opened.window, SW_SHOW);
    SetForegroundWindow(opened.window);
    SetFocus(opened.window);
    return opened;
}

void close(const Opened& opened) {
    wglMakeCurrent(nullptr, nullptr);
    wglDeleteContext(opened.renderingContext);
    ReleaseDC(opened.window, opened.deviceContext);
    DestroyWindow(opened.window);
    if (!UnregisterClassA("Probe", nullptr))
        std::exit(13);
}

/// Left half red, right half green, a blue square in the middle.
void draw() {
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluOrtho2D(0, 1, 0, 1);
    glColor4f(1, 0, 0, 1);
    glRectf(0, 0, 0.5F, 1);
    glColor4f(0, 1, 0, 1);
    glRectf(0.5F, 0, 1, 1);
    glColor4f(0, 0, 1, 1);
    glRectf(0.4F, 0.4F, 0.6F, 0.6F);
}

/// What a sloppy shutdown does: GL calls after the context has gone.
void useDeadContext() {
    const GLuint names[] = {1, 2};
    glDeleteTextures(2, names);
    glDisable(GL_BLEND);
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    SetCursorPos(anchor, anchor);
    ShowCursor(FALSE);
    FSOUND_Init(44100, 32, 0);
    const DWORD started = GetTickCount();
    close(open(false));
    const Opened opened = open(true);
    glViewport(0, 0, width, height);
    MSG message{};
    DWORD last = GetTickCount();
    say("start", started, last);
    say("textinput", SDL_IsTextInputActive(), 0);
    for (int frame = 0;; ++frame) {
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message == WM_QUIT)
                break;
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
        if (message.message == WM_QUIT || escape)
            break;
        if (!active)
            continue;
        draw();
        SwapBuffers(opened.deviceContext);
        const DWORD now = GetTickCount();
        if (frame < 60 || now - last > longFrame)
            say("frame", frame, static_cast<long long>(now - last));
        last = now;
    }
    close(opened);
    useDeadContext();
    FSOUND_Close();
    return static_cast<int>(message.wParam);
}
