#pragma once

// What the sources of the headless desktop share.

#include "platform/fsound.h"

#include "platform/headless/gl_internal.h"
#include "platform/headless/headless.h"

#include <deque>
#include <optional>

namespace headless::detail {

struct OpenWindow : Window {
    WNDPROC procedure = nullptr;
};

struct DeviceContext {
    HWND window = nullptr;
    bool formatSet = false;
};

struct Stream {
    std::string file;
    unsigned int mode = 0;
    int channel = -1; ///< where it plays, or -1
};

struct Failure {
    unsigned successes = 0;
    unsigned times = 0;
};

struct Desktop {
    DWORD tick = 0;
    DWORD frameDuration = 0;
    Hook frameHook;
    Hook idleHook;
    unsigned frames = 0;
    unsigned idleLooks = 0; ///< into the empty queue since the last frame

    std::deque<MSG> queue;
    std::optional<int> quitCode; ///< of the quit message that waits
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
    std::map<HGLRC, GlState> renderingContexts;
    PIXELFORMATDESCRIPTOR requestedFormat{};

    std::map<FSOUND_STREAM*, Stream> streams;
    std::vector<SoundCall> soundCalls;
    std::string openFault;
};
Desktop& desktop();

/// True when the call has to fail now; counts down what was ordered.
bool fails(Call call);
void postTo(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
/// Two numbers as the words of a message's parameter.
LPARAM packed(LONG low, LONG high);

/// Handles are numbers that are never used twice, so that a stale one is recognised.
template <class Handle>
Handle newHandle() {
    return reinterpret_cast<Handle>(desktop().nextHandle++);
}

/// What the handle or name stands for, or null with a problem written down.
template <class Handle, class Thing>
Thing* find(std::map<Handle, Thing>& things, const Handle& handle, const char* call) {
    const auto found = things.find(handle);
    if (found != things.end())
        return &found->second;
    addProblem(std::string(call) + ": there is nothing of this handle or name");
    return nullptr;
}

} // namespace headless::detail
