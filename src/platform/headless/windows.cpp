// Window classes, windows, display mode, cursor, message boxes and the clock of the headless desktop.

#include "platform/headless/desktop_internal.h"
#include "platform/headless/gl_internal.h"

using namespace headless;
using namespace headless::detail;

namespace {

/// Thickness of a window's frame and height of its title bar, in pixels.
constexpr LONG frameWidth = 8;
constexpr LONG titleHeight = 31;

OpenWindow* find(HWND window, const char* call) {
    const auto found = desktop().windows.find(window);
    if (found != desktop().windows.end())
        return &found->second;
    addProblem(std::string(call) + ": there is no such window");
    return nullptr;
}

LPARAM packed(LONG low, LONG high) {
    return MAKELPARAM(static_cast<WORD>(low), static_cast<WORD>(high));
}

} // namespace

HMODULE GetModuleHandleA(LPCSTR) {
    return asHandle<HMODULE>(0x40);
}

HICON LoadIconA(HINSTANCE, LPCSTR) {
    return asHandle<HICON>(0x41);
}

HCURSOR LoadCursorA(HINSTANCE, LPCSTR) {
    return asHandle<HCURSOR>(0x42);
}

WORD RegisterClassA(const WNDCLASSA* windowClass) {
    if (fails(Call::registerClass))
        return 0;
    const bool added = desktop().classes.emplace(windowClass->lpszClassName, windowClass->lpfnWndProc).second;
    return added ? 1 : 0;
}

BOOL UnregisterClassA(LPCSTR className, HINSTANCE) {
    if (fails(Call::unregisterClass))
        return FALSE;
    for (const auto& [handle, open] : desktop().windows)
        if (open.info.className == className)
            return FALSE;
    return desktop().classes.erase(className) > 0 ? TRUE : FALSE;
}

BOOL AdjustWindowRectEx(RECT* rectangle, DWORD style, BOOL, DWORD) {
    if ((style & WS_OVERLAPPEDWINDOW) != 0) {
        rectangle->left -= frameWidth;
        rectangle->right += frameWidth;
        rectangle->top -= titleHeight;
        rectangle->bottom += frameWidth;
    }
    return TRUE;
}

HWND CreateWindowExA(DWORD extendedStyle, LPCSTR className, LPCSTR windowName, DWORD style, int x, int y, int width,
                     int height, HWND, HMENU, HINSTANCE, void*) {
    Desktop& state = desktop();
    const auto windowClass = state.classes.find(className);
    if (fails(Call::createWindow))
        return nullptr;
    if (windowClass == state.classes.end()) {
        addProblem("CreateWindowExA: the class is not registered");
        return nullptr;
    }
    RECT border{0, 0, 0, 0};
    AdjustWindowRectEx(&border, style, FALSE, extendedStyle);
    OpenWindow opened;
    opened.procedure = windowClass->second;
    opened.info.className = className;
    opened.info.title = windowName;
    opened.info.style = style;
    opened.info.extendedStyle = extendedStyle;
    opened.info.outer = {x, y, x + width, y + height};
    opened.info.clientWidth = width - (border.right - border.left);
    opened.info.clientHeight = height - (border.bottom - border.top);
    const HWND handle = asHandle<HWND>(state.nextHandle++);
    state.windows.emplace(handle, std::move(opened));
    return handle;
}

BOOL DestroyWindow(HWND window) {
    Desktop& state = desktop();
    if (fails(Call::destroyWindow) || find(window, "DestroyWindow") == nullptr)
        return FALSE;
    for (const auto& [handle, context] : state.deviceContexts)
        if (context.window == window)
            addProblem("DestroyWindow: a device context of the window is not released");
    std::erase_if(state.queue, [=](const MSG& message) { return message.hwnd == window; });
    state.windows.erase(window);
    return TRUE;
}

BOOL ShowWindow(HWND window, int) {
    OpenWindow* open = find(window, "ShowWindow");
    if (open == nullptr)
        return FALSE;
    const bool wasVisible = open->info.visible;
    open->info.visible = true;
    if (!wasVisible) {
        postTo(window, WM_ACTIVATE, MAKEWPARAM(WA_ACTIVE, 0), 0);
        postTo(window, WM_SIZE, 0, packed(open->info.clientWidth, open->info.clientHeight));
    }
    return wasVisible ? TRUE : FALSE;
}

BOOL SetForegroundWindow(HWND window) {
    OpenWindow* open = find(window, "SetForegroundWindow");
    if (open == nullptr)
        return FALSE;
    open->info.foreground = true;
    return TRUE;
}

HWND SetFocus(HWND window) {
    if (OpenWindow* open = find(window, "SetFocus"))
        open->info.focused = true;
    return nullptr;
}

BOOL SetCursorPos(int x, int y) {
    Desktop& state = desktop();
    const bool moved = state.cursor.x != x || state.cursor.y != y;
    state.cursor = {x, y};
    if (moved && !state.windows.empty() && state.windows.rbegin()->second.info.visible)
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
    DisplayMode wanted;
    if ((mode->dmFields & DM_PELSWIDTH) != 0)
        wanted.width = mode->dmPelsWidth;
    if ((mode->dmFields & DM_PELSHEIGHT) != 0)
        wanted.height = mode->dmPelsHeight;
    if ((mode->dmFields & DM_BITSPERPEL) != 0)
        wanted.bits = mode->dmBitsPerPel;
    desktop().mode = wanted;
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
