// The message queue of the headless desktop.

#include "platform/headless/desktop_internal.h"

using namespace headless;
using namespace headless::detail;

namespace {

/// Lets the script post something; gives up on a loop that never draws.
void idle() {
    if (const Hook hook = desktop().idleHook) // a copy: it may replace itself
        hook();
    if (++desktop().idleLooks == idleLimit) {
        addProblem("PeekMessageA: the loop neither draws nor ends");
        PostQuitMessage(1);
    }
}

} // namespace

BOOL PeekMessageA(MSG* message, HWND window, UINT filterMin, UINT filterMax, UINT remove) {
    Desktop& now = desktop();
    if (window != nullptr || filterMin != 0 || filterMax != 0 || remove != PM_REMOVE)
        addProblem("PeekMessageA: knows only how to take whatever comes first");
    if (now.queue.empty() && !now.quitCode)
        idle();
    if (!now.queue.empty()) {
        *message = now.queue.front();
        now.queue.pop_front();
        return TRUE;
    }
    if (!now.quitCode)
        return FALSE;
    *message = {nullptr, WM_QUIT, static_cast<WPARAM>(*now.quitCode), 0, now.tick, now.cursor};
    now.quitCode.reset();
    return TRUE;
}

BOOL TranslateMessage(const MSG*) {
    return TRUE;
}

LRESULT DispatchMessageA(const MSG* message) {
    const auto window = desktop().windows.find(message->hwnd);
    if (window == desktop().windows.end())
        return 0;
    return window->second.procedure(message->hwnd, message->message, message->wParam, message->lParam);
}

void PostQuitMessage(int exitCode) {
    desktop().quitCode = exitCode;
}

LRESULT DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM) {
    desktop().defaulted.push_back(message);
    if (message == WM_SYSCOMMAND && wParam == SC_CLOSE) {
        const MSG close{window, WM_CLOSE, 0, 0, desktop().tick, desktop().cursor};
        DispatchMessageA(&close);
    } else if (message == WM_CLOSE) {
        DestroyWindow(window);
    }
    return 0;
}
