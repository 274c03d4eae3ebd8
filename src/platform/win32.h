#pragma once

// The desktop as the game expects it: window, message, cursor, display-mode, message-box, tick and WGL calls under
// their established names, with the established constants and argument orders.
//
// One thread makes the window and calls all of it. Screen positions are pixels from the top left corner of
// the screen; ticks are unsigned 32-bit milliseconds that wrap after 49.7 days. The backend is chosen when the program
// is linked: sdl/ shows a real window, headless/ is driven by tests. On Windows this header steps aside for the
// system's own.

#ifdef _WIN32
#include <windows.h>
#else

#include <cstdint>

#define WINAPI
#define CALLBACK

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using LONG = std::int32_t;
using UINT = unsigned int;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
using LPSTR = char*;
using LPCSTR = const char*;

inline constexpr BOOL TRUE = 1;
inline constexpr BOOL FALSE = 0;

using HINSTANCE = struct HINSTANCE__*;
using HMODULE = HINSTANCE;
using HWND = struct HWND__*;
using HDC = struct HDC__*;
using HGLRC = struct HGLRC__*;
using HICON = struct HICON__*;
using HCURSOR = HICON;
using HBRUSH = struct HBRUSH__*;
using HMENU = struct HMENU__*;
using PROC = int (*)();
using WNDPROC = LRESULT (*)(HWND, UINT, WPARAM, LPARAM);

struct POINT {
    LONG x;
    LONG y;
};

struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};

/// One entry of the thread's message queue.
struct MSG {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;
    POINT pt;
};

struct WNDCLASSA {
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground;
    LPCSTR lpszMenuName;
    LPCSTR lpszClassName;
};

/// The members of the display-mode record that the game fills in.
struct DEVMODEA {
    WORD dmSize;
    DWORD dmFields;
    DWORD dmBitsPerPel;
    DWORD dmPelsWidth;
    DWORD dmPelsHeight;
};

struct PIXELFORMATDESCRIPTOR {
    WORD nSize;
    WORD nVersion;
    DWORD dwFlags;
    BYTE iPixelType;
    BYTE cColorBits;
    BYTE cRedBits;
    BYTE cRedShift;
    BYTE cGreenBits;
    BYTE cGreenShift;
    BYTE cBlueBits;
    BYTE cBlueShift;
    BYTE cAlphaBits;
    BYTE cAlphaShift;
    BYTE cAccumBits;
    BYTE cAccumRedBits;
    BYTE cAccumGreenBits;
    BYTE cAccumBlueBits;
    BYTE cAccumAlphaBits;
    BYTE cDepthBits;
    BYTE cStencilBits;
    BYTE cAuxBuffers;
    BYTE iLayerType;
    BYTE bReserved;
    DWORD dwLayerMask;
    DWORD dwVisibleMask;
    DWORD dwDamageMask;
};
static_assert(sizeof(PIXELFORMATDESCRIPTOR) == 40);

// Window messages.
inline constexpr UINT WM_SIZE = 0x0005;
inline constexpr UINT WM_ACTIVATE = 0x0006;
inline constexpr UINT WM_CLOSE = 0x0010;
inline constexpr UINT WM_QUIT = 0x0012;
inline constexpr UINT WM_KEYDOWN = 0x0100;
inline constexpr UINT WM_KEYUP = 0x0101;
inline constexpr UINT WM_SYSKEYDOWN = 0x0104;
inline constexpr UINT WM_SYSKEYUP = 0x0105;
inline constexpr UINT WM_SYSCOMMAND = 0x0112;
inline constexpr UINT WM_MOUSEMOVE = 0x0200;
inline constexpr UINT WM_LBUTTONDOWN = 0x0201;
inline constexpr UINT WM_LBUTTONUP = 0x0202;

// System commands (wParam of WM_SYSCOMMAND) and activation states (low word of WM_ACTIVATE's wParam).
inline constexpr WPARAM SC_CLOSE = 0xF060;
inline constexpr WPARAM SC_SCREENSAVE = 0xF140;
inline constexpr WPARAM SC_MONITORPOWER = 0xF170;
inline constexpr WORD WA_INACTIVE = 0;
inline constexpr WORD WA_ACTIVE = 1;

// Virtual-key codes; letters and digits are their upper-case ASCII codes.
inline constexpr int VK_RETURN = 0x0D;
inline constexpr int VK_MENU = 0x12; // Alt
inline constexpr int VK_ESCAPE = 0x1B;
inline constexpr int VK_SPACE = 0x20;
inline constexpr int VK_F1 = 0x70;
inline constexpr int VK_F2 = 0x71;
inline constexpr int VK_F3 = 0x72;
inline constexpr int VK_F4 = 0x73;
inline constexpr int VK_F5 = 0x74;
inline constexpr int VK_F6 = 0x75;
inline constexpr int VK_F7 = 0x76;
inline constexpr int VK_F8 = 0x77;
inline constexpr int VK_F9 = 0x78;
inline constexpr int VK_F10 = 0x79;

// Window classes and styles.
inline constexpr UINT CS_VREDRAW = 0x0001;
inline constexpr UINT CS_HREDRAW = 0x0002;
inline constexpr UINT CS_OWNDC = 0x0020;
inline constexpr DWORD WS_POPUP = 0x80000000u;
inline constexpr DWORD WS_CLIPSIBLINGS = 0x04000000u;
inline constexpr DWORD WS_CLIPCHILDREN = 0x02000000u;
inline constexpr DWORD WS_OVERLAPPEDWINDOW = 0x00CF0000u;
inline constexpr DWORD WS_EX_WINDOWEDGE = 0x00000100u;
inline constexpr DWORD WS_EX_APPWINDOW = 0x00040000u;
inline constexpr int SW_SHOW = 5;
inline const LPCSTR IDI_WINLOGO = reinterpret_cast<LPCSTR>(std::uintptr_t{32517});
inline const LPCSTR IDC_ARROW = reinterpret_cast<LPCSTR>(std::uintptr_t{32512});

// Display modes.
inline constexpr DWORD DM_BITSPERPEL = 0x00040000u;
inline constexpr DWORD DM_PELSWIDTH = 0x00080000u;
inline constexpr DWORD DM_PELSHEIGHT = 0x00100000u;
inline constexpr DWORD CDS_FULLSCREEN = 0x00000004u;
inline constexpr LONG DISP_CHANGE_SUCCESSFUL = 0;
inline constexpr LONG DISP_CHANGE_BADMODE = -2;

// Pixel formats.
inline constexpr DWORD PFD_DOUBLEBUFFER = 0x00000001u;
inline constexpr DWORD PFD_DRAW_TO_WINDOW = 0x00000004u;
inline constexpr DWORD PFD_SUPPORT_OPENGL = 0x00000020u;
inline constexpr BYTE PFD_TYPE_RGBA = 0;
inline constexpr BYTE PFD_MAIN_PLANE = 0;

// Message boxes.
inline constexpr UINT MB_OK = 0x00;
inline constexpr UINT MB_YESNO = 0x04;
inline constexpr UINT MB_ICONSTOP = 0x10;
inline constexpr UINT MB_ICONEXCLAMATION = 0x30;
inline constexpr UINT MB_ICONINFORMATION = 0x40;
inline constexpr int IDOK = 1;
inline constexpr int IDYES = 6;
inline constexpr int IDNO = 7;

inline constexpr UINT PM_REMOVE = 0x0001;

constexpr WORD LOWORD(std::uintptr_t value) {
    return static_cast<WORD>(value & 0xFFFFu);
}
constexpr WORD LOWORD(std::intptr_t value) {
    return LOWORD(static_cast<std::uintptr_t>(value));
}
constexpr WORD HIWORD(std::uintptr_t value) {
    return static_cast<WORD>((value >> 16) & 0xFFFFu);
}
constexpr WORD HIWORD(std::intptr_t value) {
    return HIWORD(static_cast<std::uintptr_t>(value));
}
constexpr LPARAM MAKELPARAM(WORD low, WORD high) {
    return static_cast<LPARAM>(static_cast<std::uint32_t>(low) | (static_cast<std::uint32_t>(high) << 16));
}
constexpr WPARAM MAKEWPARAM(WORD low, WORD high) {
    return static_cast<WPARAM>(MAKELPARAM(low, high));
}

/// The entry point of the game; the backend's own process entry calls it.
int WINAPI WinMain(HINSTANCE instance, HINSTANCE previousInstance, LPSTR commandLine, int showCommand);

// Windows.

/// Handle of the running module; the name is always null.
HMODULE GetModuleHandleA(LPCSTR moduleName);
HICON LoadIconA(HINSTANCE instance, LPCSTR name);
HCURSOR LoadCursorA(HINSTANCE instance, LPCSTR name);
/// Registers a window class; 0 on failure (the class name is taken).
WORD RegisterClassA(const WNDCLASSA* windowClass);
BOOL UnregisterClassA(LPCSTR className, HINSTANCE instance);
/// Grows the client rectangle to the outer rectangle of a window with these styles.
BOOL AdjustWindowRectEx(RECT* rectangle, DWORD style, BOOL hasMenu, DWORD extendedStyle);
/// Creates a hidden window of a registered class; null on failure.
HWND CreateWindowExA(DWORD extendedStyle, LPCSTR className, LPCSTR windowName, DWORD style, int x, int y, int width,
                     int height, HWND parent, HMENU menu, HINSTANCE instance, void* parameter);
BOOL DestroyWindow(HWND window);
BOOL ShowWindow(HWND window, int command);
BOOL SetForegroundWindow(HWND window);
HWND SetFocus(HWND window);
LRESULT DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Messages.

/// Takes the next message off the queue; FALSE when there is none. Does not wait, but may nap for some ms while the
/// window is minimised.
BOOL PeekMessageA(MSG* message, HWND window, UINT filterMin, UINT filterMax, UINT remove);
BOOL TranslateMessage(const MSG* message);
/// Calls the window procedure of the message's window.
LRESULT DispatchMessageA(const MSG* message);
/// Puts WM_QUIT with this code behind the messages that wait.
void PostQuitMessage(int exitCode);

// Cursor, display mode, message box, time.

BOOL SetCursorPos(int x, int y);
BOOL GetCursorPos(POINT* position);
/// Counts the cursor's visibility up or down and returns the count; it shows while the count is 0 or more.
int ShowCursor(BOOL show);
/// Sets the display mode; a null mode returns to the desktop's own.
LONG ChangeDisplaySettingsA(DEVMODEA* mode, DWORD flags);
/// Shows a modal message box and returns the button pressed.
int MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT type);
/// Milliseconds since the system started, in steps of 15 or 16; wraps at 2^32. Time in which the window is minimised or
/// the program could not run may be left out.
DWORD GetTickCount();

// GL contexts.

HDC GetDC(HWND window);
int ReleaseDC(HWND window, HDC deviceContext);
/// Index of the pixel format nearest to the one described; 0 on failure.
int ChoosePixelFormat(HDC deviceContext, const PIXELFORMATDESCRIPTOR* format);
BOOL SetPixelFormat(HDC deviceContext, int index, const PIXELFORMATDESCRIPTOR* format);
/// Presents the back buffer; returns no earlier than the tick has moved on since the last call.
BOOL SwapBuffers(HDC deviceContext);
HGLRC wglCreateContext(HDC deviceContext);
BOOL wglMakeCurrent(HDC deviceContext, HGLRC renderingContext);
BOOL wglDeleteContext(HGLRC renderingContext);
/// Entry point of an extension function, or null.
PROC wglGetProcAddress(LPCSTR name);

#endif
