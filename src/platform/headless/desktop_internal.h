#pragma once

// What the sources of the headless desktop share.

#include "platform/headless/headless.h"

#include <deque>
#include <map>
#include <memory>

namespace headless::detail {

struct DeviceContext;

struct OpenWindow {
    Window info;
    WNDPROC procedure = nullptr;
};

struct DeviceContext {
    HWND window = nullptr;
    bool formatSet = false;
};

struct Failure {
    unsigned successes = 0;
    unsigned times = 0;
};

/// Handles are numbers that are never used twice, so that a stale one is recognised.
template <class Handle>
Handle asHandle(std::uintptr_t number) {
    return reinterpret_cast<Handle>(number);
}

struct Desktop {
    DWORD tick = 0;
    DWORD frameDuration = 0;
    Hook frameHook;
    Hook idleHook;
    unsigned frames = 0;
    unsigned idleLooks = 0; ///< into the empty queue since the last frame

    std::deque<MSG> queue;
    bool quitPending = false;
    bool quitPosted = false;
    int quitCode = 0;
    std::vector<UINT> defaulted;

    DisplayMode mode;
    POINT cursor{0, 0};
    int cursorCount = 0;
    std::vector<ShownBox> boxes;
    std::deque<int> answers;
    std::map<Call, Failure> failures;

    std::uintptr_t nextHandle = 0x100;
    std::map<std::string, WNDPROC> classes;
    std::map<HWND, OpenWindow> windows; ///< the newest has the highest handle
    std::map<HDC, DeviceContext> deviceContexts;
    std::map<HGLRC, std::unique_ptr<GlState>> renderingContexts;
    HGLRC current = nullptr;
    PIXELFORMATDESCRIPTOR requestedFormat{};
};
Desktop& desktop();

/// True when the call has to fail now; counts down what was ordered.
bool fails(Call call);
HWND newestWindow();
void postTo(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
void resetSound();
std::size_t openStreams();

} // namespace headless::detail
