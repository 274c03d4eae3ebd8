// The message queue of the headless desktop.

#include "platform/headless/desktop_internal.h"
#include "platform/headless/gl_internal.h"

using namespace headless;
using namespace headless::detail;

namespace {

MSG quitMessage(const Desktop& state) {
    return {nullptr, WM_QUIT, static_cast<WPARAM>(state.quitCode), 0, state.tick, state.cursor};
}

/// Lets the script post something; gives up on a loop that never draws.
void idle(Desktop& state) {
    if (state.idleHook) {
        const Hook hook = state.idleHook; // it may replace itself
        hook();
    }
    if (++state.idleLooks > idleLimit && !state.quitPosted) {
        addProblem("PeekMessageA: the loop neither draws nor ends");
        PostQuitMessage(1);
    }
}

bool matches(const MSG& message, HWND window, UINT filterMin, UINT filterMax) {
    const bool unfiltered = filterMin == 0 && filterMax == 0;
    return (window == nullptr || message.hwnd == window) &&
           (unfiltered || (message.message >= filterMin && message.message <= filterMax));
}

} // namespace

BOOL PeekMessageA(MSG* message, HWND window, UINT filterMin, UINT filterMax, UINT remove) {
    Desktop& state = desktop();
    if (state.queue.empty() && !state.quitPending)
        idle(state);
    for (auto entry = state.queue.begin(); entry != state.queue.end(); ++entry) {
        if (!matches(*entry, window, filterMin, filterMax))
            continue;
        *message = *entry;
        if ((remove & PM_REMOVE) != 0)
            state.queue.erase(entry);
        return TRUE;
    }
    if (!state.quitPending)
        return FALSE;
    *message = quitMessage(state);
    if ((remove & PM_REMOVE) != 0)
        state.quitPending = false;
    return TRUE;
}

BOOL TranslateMessage(const MSG*) {
    return TRUE;
}

LRESULT DispatchMessageA(const MSG* message) {
    const auto window = desktop().windows.find(message->hwnd);
    if (window == desktop().windows.end() || window->second.procedure == nullptr)
        return 0;
    return window->second.procedure(message->hwnd, message->message, message->wParam, message->lParam);
}

void PostQuitMessage(int exitCode) {
    Desktop& state = desktop();
    state.quitPending = true;
    state.quitPosted = true;
    state.quitCode = exitCode;
}

LRESULT DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM) {
    desktop().defaulted.push_back(message);
    if (message == WM_SYSCOMMAND && wParam == SC_CLOSE) {
        const auto open = desktop().windows.find(window);
        if (open != desktop().windows.end() && open->second.procedure != nullptr)
            open->second.procedure(window, WM_CLOSE, 0, 0);
    } else if (message == WM_CLOSE) {
        DestroyWindow(window);
    }
    return 0;
}
