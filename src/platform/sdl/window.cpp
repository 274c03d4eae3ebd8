// The window, its class, the screen and the cursor.

#include "platform/sdl/backend.h"
#include "platform/sdl/frame.h"
#include "platform/sdl/icon.h"
#include "platform/sdl/letterbox.h"
#include "platform/sdl/quiet_stderr.h"
#include "platform/sdl/sdl_desktop.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string_view>

namespace {

/// Nominal frame of a window with a title bar; SDL adds the real one around the client area by itself.
constexpr LONG frameWidth = 8;
constexpr LONG titleHeight = 31;

void addFrame(RECT& rectangle, DWORD style) {
    if ((style & WS_OVERLAPPEDWINDOW) == 0)
        return;
    rectangle.left -= frameWidth;
    rectangle.right += frameWidth;
    rectangle.top -= titleHeight;
    rectangle.bottom += frameWidth;
}

void askForContext() {
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_COMPATIBILITY);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 24);
}

/// The first one, which is the primary one, where the pointer is on none.
int displayWithPointer() {
    SDL_Point pointer{};
    SDL_GetGlobalMouseState(&pointer.x, &pointer.y);
    SDL_Rect bounds;
    for (int i = 0; i < SDL_GetNumVideoDisplays(); ++i)
        if (SDL_GetDisplayBounds(i, &bounds) == 0 && SDL_PointInRect(&pointer, &bounds) == SDL_TRUE)
            return i;
    return 0;
}

/// Over the whole display. Placed by hand as well, since where there is no window manager nobody else does.
void cover(SDL_Window* window) {
    SDL_Rect bounds;
    if (SDL_GetDisplayBounds(displayWithPointer(), &bounds) == 0) {
        SDL_SetWindowBordered(window, SDL_FALSE);
        SDL_SetWindowPosition(window, bounds.x, bounds.y);
        SDL_SetWindowSize(window, bounds.w, bounds.h);
    }
    SDL_SetWindowFullscreen(window, SDL_WINDOW_FULLSCREEN_DESKTOP);
}

/// An ordinary window of the size the game asked for, or less where the display has no room for that.
void uncover(const HWND__& window) {
    SDL_SetWindowFullscreen(window.window, 0);
    const int display = std::max(0, SDL_GetWindowDisplayIndex(window.window));
    SDL_Rect room{0, 0, window.askedWidth, window.askedHeight};
    SDL_GetDisplayUsableBounds(display, &room);
    const Letterbox fitting = letterbox(window.askedWidth, window.askedHeight, std::min(room.w, window.askedWidth),
                                        std::min(room.h, window.askedHeight));
    SDL_SetWindowBordered(window.window, SDL_TRUE);
    SDL_SetWindowResizable(window.window, SDL_TRUE);
    SDL_SetWindowSize(window.window, fitting.width, fitting.height);
    const int centre = static_cast<int>(SDL_WINDOWPOS_CENTERED_DISPLAY(display));
    SDL_SetWindowPosition(window.window, centre, centre);
}

SDL_Window* openWindow(const char* title, int width, int height, bool fullscreen) {
    askForContext();
    const int display = displayWithPointer();
    SDL_Rect place{SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, width, height};
    // Asked for in full, so that it covers the screen where no window manager stretches it.
    if (fullscreen && SDL_GetDisplayBounds(display, &place) != 0)
        place = {0, 0, width, height};
    Uint32 flags = SDL_WINDOW_OPENGL | SDL_WINDOW_HIDDEN;
    flags |=
        fullscreen ? static_cast<Uint32>(SDL_WINDOW_FULLSCREEN_DESKTOP) : static_cast<Uint32>(SDL_WINDOW_RESIZABLE);
    SDL_Window* window = SDL_CreateWindow(title, place.x, place.y, place.w, place.h, flags);
    if (window == nullptr) {
        // Some drivers have no depth buffer of 24 bits.
        SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 16);
        window = SDL_CreateWindow(title, place.x, place.y, place.w, place.h, flags);
    }
    if (window == nullptr)
        std::cerr << "brackenmoor: the window cannot be opened: " << SDL_GetError() << '\n';
    else
        setIcon(window);
    return window;
}

bool isSet(const char* name) {
    const char* found = std::getenv(name);
    return found != nullptr && *found != '\0';
}

bool startVideo() {
    const QuietStderr quiet;
    return SDL_Init(SDL_INIT_VIDEO) == 0;
}

bool isReal(std::string_view driver) {
    return driver != "offscreen" && driver != "dummy" && driver != "evdev";
}

} // namespace

Backend& backend() {
    static Backend instance;
    return instance;
}

bool environmentIs(const char* name, const char* value) {
    const char* found = std::getenv(name);
    return found != nullptr && std::strcmp(found, value) == 0;
}

int environmentPercent(const char* name) {
    const char* const text = std::getenv(name);
    int percent = 100;
    if (text == nullptr || std::from_chars(text, text + std::strlen(text), percent).ec != std::errc())
        return 100;
    return std::clamp(percent, 0, 100);
}

bool startDesktop() {
    startClock();
    backend().invertedMouse = environmentIs("BRACKENMOOR_INVERT_MOUSE", "1");
    SDL_SetMainReady();
    SDL_SetHint(SDL_HINT_APP_NAME, "Brackenmoor");
    const char* wanted = std::getenv("SDL_VIDEODRIVER");
    const bool asked = isSet("SDL_VIDEODRIVER");
    const bool started = startVideo();
    if (started && (asked || isReal(SDL_GetCurrentVideoDriver()))) {
        // On from the start, it hands every letter to an input method first, and one that composes keeps it.
        SDL_StopTextInput();
        return true;
    }
    if (asked)
        std::cerr << "brackenmoor: the video driver named by SDL_VIDEODRIVER, \"" << wanted
                  << "\", cannot be used: " << SDL_GetError() << ".\n";
    else
        std::cerr
            << "brackenmoor: there is no display to show the game on; start it from a graphical session: DISPLAY or "
               "WAYLAND_DISPLAY must name one that answers.\n";
    SDL_Quit();
    return false;
}

void setDesktopLog(void (*log)(const char* line)) {
    backend().log = log;
}

void stopDesktop() {
    SDL_Quit();
}

int exitStatus(int gameResult) {
    if (gameResult < 0)
        return EXIT_FAILURE;
    return backend().lastTaken.message == WM_QUIT ? gameResult : EXIT_SUCCESS;
}

HMODULE GetModuleHandleA(LPCSTR) {
    static int module = 0;
    return reinterpret_cast<HMODULE>(&module);
}

HICON LoadIconA(HINSTANCE, LPCSTR) {
    return nullptr;
}

HCURSOR LoadCursorA(HINSTANCE, LPCSTR) {
    return nullptr;
}

WORD RegisterClassA(const WNDCLASSA* windowClass) {
    Backend& state = backend();
    if (!state.className.empty())
        return 0;
    state.className = windowClass->lpszClassName;
    state.classProcedure = windowClass->lpfnWndProc;
    return 1;
}

BOOL UnregisterClassA(LPCSTR className, HINSTANCE) {
    Backend& state = backend();
    if (state.className != className || state.windowOpen)
        return FALSE;
    state.className.clear();
    return TRUE;
}

BOOL AdjustWindowRectEx(RECT* rectangle, DWORD style, BOOL, DWORD) {
    addFrame(*rectangle, style);
    return TRUE;
}

HWND CreateWindowExA(DWORD, LPCSTR className, LPCSTR windowName, DWORD style, int, int, int width, int height, HWND,
                     HMENU, HINSTANCE, void*) {
    Backend& state = backend();
    if (state.windowOpen || state.className != className)
        return nullptr;
    RECT frame{0, 0, 0, 0};
    addFrame(frame, style);
    HWND__ opened;
    opened.procedure = state.classProcedure;
    opened.width = width - (frame.right - frame.left);
    opened.height = height - (frame.bottom - frame.top);
    opened.askedWidth = opened.width;
    opened.askedHeight = opened.height;
    opened.fullscreen = state.fullscreenMode && (style & WS_POPUP) != 0 && !environmentIs("BRACKENMOOR_WINDOWED", "1");
    opened.window = openWindow(windowName, opened.width, opened.height, opened.fullscreen);
    if (opened.window == nullptr)
        return nullptr;
    state.window = opened;
    state.windowOpen = true;
    return &state.window;
}

BOOL DestroyWindow(HWND window) {
    Backend& state = backend();
    if (!state.windowOpen || window != &state.window)
        return FALSE;
    SDL_SetRelativeMouseMode(SDL_FALSE);
    SDL_DestroyWindow(state.window.window);
    // Nobody is left to take the window's messages, nor to see its keys go up.
    state.queue.clear();
    state.keys.releaseAll();
    state.leftButton = false;
    state.focused = false;
    state.toldActive = false;
    state.pause = Pause::no;
    state.window = {};
    state.windowOpen = false;
    updateClock();
    return TRUE;
}

BOOL ShowWindow(HWND window, int) {
    if (window == nullptr)
        return FALSE;
    window->toBeShown = true;
    return FALSE;
}

void switchFullscreen() {
    Backend& state = backend();
    HWND__& window = state.window;
    if (!state.windowOpen)
        return;
    window.fullscreen = !window.fullscreen;
    if (window.fullscreen)
        cover(window.window);
    else
        uncover(window);
    window.width = window.askedWidth;
    window.height = window.askedHeight;
    fitFrame();
    postMessage(WM_SIZE, 0, MAKELPARAM(static_cast<WORD>(window.width), static_cast<WORD>(window.height)));
}

void showWaitingWindow() {
    Backend& state = backend();
    if (!state.windowOpen || !state.window.toBeShown)
        return;
    state.window.toBeShown = false;
    SDL_ShowWindow(state.window.window);
    SDL_RaiseWindow(state.window.window);
    // Where no window manager hands the keyboard out, it has to be taken.
    SDL_SetWindowInputFocus(state.window.window);
}

BOOL SetForegroundWindow(HWND window) {
    return window != nullptr ? TRUE : FALSE;
}

HWND SetFocus(HWND) {
    return nullptr;
}

BOOL SetCursorPos(int x, int y) {
    backend().cursor.place(x, y);
    return TRUE;
}

BOOL GetCursorPos(POINT* position) {
    *position = backend().cursor.position();
    return TRUE;
}

int ShowCursor(BOOL show) {
    const int count = backend().cursor.show(show != FALSE);
    updateCapture();
    return count;
}

void updateCapture() {
    const Backend& state = backend();
    const bool captured = state.windowOpen && state.focused && state.cursor.hidden() && state.pause != Pause::on;
    SDL_SetRelativeMouseMode(captured ? SDL_TRUE : SDL_FALSE);
}

LONG ChangeDisplaySettingsA(DEVMODEA* mode, DWORD) {
    backend().fullscreenMode = mode != nullptr;
    return DISP_CHANGE_SUCCESSFUL;
}
