// Window classes, windows, display mode, cursor, message boxes and the clock of the headless desktop.

#include "platform/headless/desktop_internal.h"

#include <utility>

using namespace headless;
using namespace headless::detail;

HMODULE GetModuleHandleA(LPCSTR) {
    return reinterpret_cast<HMODULE>(0x40);
}

HICON LoadIconA(HINSTANCE, LPCSTR) {
    return reinterpret_cast<HICON>(0x41);
}

HCURSOR LoadCursorA(HINSTANCE, LPCSTR) {
    return reinterpret_cast<HCURSOR>(0x42);
}

WORD RegisterClassA(const WNDCLASSA* windowClass) {
    if (fails(Call::registerClass))
        return 0;
    return desktop().classes.emplace(windowClass->lpszClassName, windowClass->lpfnWndProc).second ? 1 : 0;
}

BOOL UnregisterClassA(LPCSTR className, HINSTANCE) {
    if (fails(Call::unregisterClass))
        return FALSE;
    for (const auto& [handle, open] : desktop().windows)
        if (open.className == className)
            return FALSE;
    return desktop().classes.erase(className) > 0 ? TRUE : FALSE;
}

BOOL AdjustWindowRectEx(RECT* rectangle, DWORD style, BOOL, DWORD) {
    // Thickness of the frame and height of the title bar, in pixels.
    constexpr LONG frameWidth = 8;
    constexpr LONG titleHeight = 31;
    if ((style & WS_OVERLAPPEDWINDOW) != 0) {
        rectangle->left -= frameWidth;
        rectangle->right += frameWidth;
        rectangle->top -= titleHeight;
        rectangle->bottom += frameWidth;
    }
    return TRUE;
}

HWND CreateWindowExA(DWORD extendedStyle, LPCSTR className, LPCSTR windowName, DWORD style, int, int, int width,
                     int height, HWND, HMENU, HINSTANCE, void*) {
    if (fails(Call::createWindow))
        return nullptr;
    const WNDPROC* const procedure = find(desktop().classes, std::string(className), "CreateWindowExA");
    if (procedure == nullptr)
        return nullptr;
    RECT border{0, 0, 0, 0};
    AdjustWindowRectEx(&border, style, FALSE, extendedStyle);
    const int clientWidth = width - (border.right - border.left);
    const int clientHeight = height - (border.bottom - border.top);
    const Window opened{className, windowName, style, clientWidth, clientHeight, false};
    return desktop().windows.emplace(newHandle<HWND>(), OpenWindow{opened, *procedure}).first->first;
}

BOOL DestroyWindow(HWND window) {
    Desktop& state = desktop();
    if (fails(Call::destroyWindow) || find(state.windows, window, "DestroyWindow") == nullptr)
        return FALSE;
    for (const auto& [handle, context] : state.deviceContexts)
        if (context.window == window)
            addProblem("DestroyWindow: a device context of the window is not released");
    std::erase_if(state.queue, [=](const MSG& message) { return message.hwnd == window; });
    state.windows.erase(window);
    return TRUE;
}

BOOL ShowWindow(HWND window, int) {
    OpenWindow* const shown = find(desktop().windows, window, "ShowWindow");
    if (shown == nullptr)
        return FALSE;
    if (std::exchange(shown->visible, true))
        return TRUE;
    postTo(window, WM_ACTIVATE, MAKEWPARAM(WA_ACTIVE, 0), 0);
    postTo(window, WM_SIZE, 0, packed(shown->clientWidth, shown->clientHeight));
    return FALSE;
}

BOOL SetForegroundWindow(HWND window) {
    return find(desktop().windows, window, "SetForegroundWindow") != nullptr ? TRUE : FALSE;
}

HWND SetFocus(HWND window) {
    find(desktop().windows, window, "SetFocus");
    return nullptr;
}

BOOL SetCursorPos(int x, int y) {
    POINT& cursor = desktop().cursor;
    const bool moved = cursor.x != x || cursor.y != y;
    cursor = {x, y};
    if (moved && window() != nullptr && window()->visible)
        post(WM_MOUSEMOVE, 0, packed(x, y));
    return TRUE;
}

BOOL GetCursorPos(POINT* position) {
    *position = desktop().cursor;
    return TRUE;
}

int ShowCursor(BOOL show) {
    return desktop().cursorCount += show != FALSE ? 1 : -1;
}

LONG ChangeDisplaySettingsA(DEVMODEA* mode, DWORD) {
    if (mode == nullptr) {
        desktop().mode = {};
        return DISP_CHANGE_SUCCESSFUL;
    }
    if (fails(Call::changeDisplaySettings))
        return DISP_CHANGE_BADMODE;
    if (mode->dmFields != (DM_PELSWIDTH | DM_PELSHEIGHT | DM_BITSPERPEL))
        addProblem("ChangeDisplaySettingsA: knows only how to set width, height and depth together");
    desktop().mode = {mode->dmPelsWidth, mode->dmPelsHeight, mode->dmBitsPerPel};
    return DISP_CHANGE_SUCCESSFUL;
}

int MessageBoxA(HWND, LPCSTR text, LPCSTR caption, UINT type) {
    Desktop& state = desktop();
    int answer = (type & MB_YESNO) != 0 ? IDYES : IDOK;
    if (!state.answers.empty()) {
        answer = state.answers.front();
        state.answers.pop_front();
    }
    state.boxes.push_back({text, caption, type, answer});
    return answer;
}

DWORD GetTickCount() {
    return desktop().tick;
}
