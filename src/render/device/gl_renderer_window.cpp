#include "render/device/gl_renderer.h"

#include "platform/gl.h"

namespace {

constexpr const char* windowClassName = "OpenGL";

/// Requested by every window of the run; its colour bits stay those of the first request.
PIXELFORMATDESCRIPTOR requestedPixelFormat{};

const PIXELFORMATDESCRIPTOR& pixelFormatFor(int bits) {
    PIXELFORMATDESCRIPTOR& format = requestedPixelFormat;
    if (format.nSize == 0) {
        format.nSize = sizeof format;
        format.nVersion = 1;
        format.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
        format.iPixelType = PFD_TYPE_RGBA;
        format.cColorBits = static_cast<BYTE>(bits);
        format.cDepthBits = 16;
        format.iLayerType = PFD_MAIN_PLANE;
    }
    return format;
}

void reportShutdownError(const char* text) {
    MessageBoxA(nullptr, text, "SHUTDOWN ERROR", MB_OK | MB_ICONINFORMATION);
}

} // namespace

bool GLRenderer::createWindow(bool fullscreenWanted, int widthWanted, int heightWanted, int bitsWanted,
                              const std::string& titleWanted) {
    fullscreen = fullscreenWanted;
    width = static_cast<std::uint32_t>(widthWanted);
    height = static_cast<std::uint32_t>(heightWanted);
    bits = bitsWanted;
    title = titleWanted;
    hInstance = GetModuleHandleA(nullptr);
    if (!registerWindowClass() || (fullscreen && !changeDisplayMode()) || !openWindow() || !createContext())
        return false;

    ShowWindow(hWnd, SW_SHOW);
    SetForegroundWindow(hWnd);
    SetFocus(hWnd);
    resize(widthWanted, heightWanted);
    loadSwapControl();
    switchVSyncOff();
    setGlobalState();
    setLightAndMaterial();
    return true;
}

bool GLRenderer::registerWindowClass() {
    WNDCLASSA windowClass{};
    windowClass.style = CS_HREDRAW | CS_VREDRAW | CS_OWNDC;
    windowClass.lpfnWndProc = wndProc;
    windowClass.hInstance = hInstance;
    windowClass.hIcon = LoadIconA(nullptr, IDI_WINLOGO);
    windowClass.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    windowClass.lpszClassName = windowClassName;
    if (RegisterClassA(&windowClass) != 0)
        return true;
    MessageBoxA(nullptr, "Failed to register the window class.", "ERROR", MB_OK | MB_ICONEXCLAMATION);
    return false;
}

bool GLRenderer::changeDisplayMode() {
    DEVMODEA mode{};
    mode.dmSize = sizeof mode;
    mode.dmPelsWidth = width;
    mode.dmPelsHeight = height;
    mode.dmBitsPerPel = static_cast<DWORD>(bits);
    mode.dmFields = DM_BITSPERPEL | DM_PELSWIDTH | DM_PELSHEIGHT;
    if (ChangeDisplaySettingsA(&mode, CDS_FULLSCREEN) == DISP_CHANGE_SUCCESSFUL)
        return true;
    if (MessageBoxA(nullptr,
                    "The Required Fullscreen Mode ist not supported by\n your viedeo card. Use Window mode instead?",
                    "GL", MB_YESNO | MB_ICONEXCLAMATION) == IDYES) {
        fullscreen = false;
        return true;
    }
    MessageBoxA(nullptr, "Programm will now close", "ERROR", MB_OK | MB_ICONSTOP);
    return false;
}

bool GLRenderer::openWindow() {
    DWORD extendedStyle = WS_EX_APPWINDOW;
    DWORD style = WS_POPUP;
    if (fullscreen) {
        ShowCursor(FALSE);
    } else {
        extendedStyle |= WS_EX_WINDOWEDGE;
        style = WS_OVERLAPPEDWINDOW;
    }
    RECT rectangle{0, 0, static_cast<LONG>(width), static_cast<LONG>(height)};
    AdjustWindowRectEx(&rectangle, style, FALSE, extendedStyle);
    hWnd = CreateWindowExA(extendedStyle, windowClassName, title.c_str(), style | WS_CLIPSIBLINGS | WS_CLIPCHILDREN, 0,
                           0, rectangle.right - rectangle.left, rectangle.bottom - rectangle.top, nullptr, nullptr,
                           hInstance, nullptr);
    return hWnd != nullptr || failCreation("Window creation error.");
}

bool GLRenderer::createContext() {
    hDC = GetDC(hWnd);
    if (hDC == nullptr)
        return failCreation("Can't create a GL device context.");
    const PIXELFORMATDESCRIPTOR& format = pixelFormatFor(bits);
    const int index = ChoosePixelFormat(hDC, &format);
    if (index == 0)
        return failCreation("Can't find a suitable pixel format.");
    if (SetPixelFormat(hDC, index, &format) == FALSE)
        return failCreation("Can't set the pixel format.");
    hRC = wglCreateContext(hDC);
    if (hRC == nullptr)
        return failCreation("Can't create a GL render context.");
    if (wglMakeCurrent(hDC, hRC) == FALSE)
        return failCreation("Can't activate the GL render context.");
    return true;
}

bool GLRenderer::failCreation(const char* reason) {
    killWindow();
    MessageBoxA(nullptr, reason, "ERROR", MB_OK | MB_ICONEXCLAMATION);
    return false;
}

void GLRenderer::switchVSyncOff() {
    if (isVSyncOn())
        setVSync(false);
}

void GLRenderer::setGlobalState() const {
    glEnable(GL_TEXTURE_2D);
    glShadeModel(GL_SMOOTH);
    glClearColor(0.62f, 0.72f, 0.91f, 0.5f);
    glClearDepth(1.0);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glCullFace(GL_BACK);
    glEnable(GL_CULL_FACE);
    glPolygonOffset(1.0f, 1.0f);
    glEnable(GL_POLYGON_OFFSET_FILL);
}

void GLRenderer::setLightAndMaterial() const {
    const GLfloat half[] = {0.5f, 0.5f, 0.5f, 1.0f};
    const GLfloat white[] = {1.0f, 1.0f, 1.0f, 1.0f};
    const GLfloat black[] = {0.0f, 0.0f, 0.0f, 1.0f};
    glLightfv(GL_LIGHT0, GL_AMBIENT, half);
    glLightfv(GL_LIGHT0, GL_DIFFUSE, white);
    glLightfv(GL_LIGHT0, GL_SPECULAR, white);
    glLightfv(GL_LIGHT0, GL_POSITION, lightPosition.data());
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
    glMaterialfv(GL_FRONT, GL_AMBIENT, black);
    glMaterialfv(GL_FRONT, GL_DIFFUSE, white);
    glMaterialfv(GL_FRONT, GL_SPECULAR, white);
    glMaterialf(GL_FRONT, GL_SHININESS, 100.0f);
    glMaterialfv(GL_FRONT, GL_EMISSION, black);
}

bool GLRenderer::killWindow() {
    if (wglGetSwapIntervalEXT != nullptr && !isVSyncOn())
        setVSync(true);
    if (fullscreen) {
        ChangeDisplaySettingsA(nullptr, 0);
        ShowCursor(TRUE);
    }
    releaseContext();
    if (hDC != nullptr && ReleaseDC(hWnd, hDC) == 0) {
        reportShutdownError("Release Device Context Failed.");
        hDC = nullptr;
    }
    if (hWnd != nullptr && DestroyWindow(hWnd) == FALSE) {
        reportShutdownError("Could not release hWnd.");
        hWnd = nullptr;
    }
    if (UnregisterClassA(windowClassName, hInstance) == FALSE) {
        reportShutdownError("Could not unregister class.");
        hInstance = nullptr;
    }
    return true;
}

void GLRenderer::releaseContext() {
    if (hRC == nullptr)
        return;
    if (wglMakeCurrent(nullptr, nullptr) == FALSE)
        reportShutdownError("Release of RC and DC failed.");
    if (wglDeleteContext(hRC) == FALSE)
        reportShutdownError("Release Rendering Context Failed.");
    hRC = nullptr;
}
