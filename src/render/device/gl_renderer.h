#pragma once

// The one window, its GL context and the GL state that all drawing relies on.
//
// Without the swap-control extension the two pointers stay null and vertical synchronisation is left alone.
// `killWindow` does not run by itself: whoever opened the window closes it before the renderer goes.

#include "platform/win32.h"
#include "render/device/renderer.h"

#include <cstdint>

class GLRenderer : public Renderer {
public:
    /// Registers itself; the window procedure goes into the window class.
    GLRenderer(WNDPROC windowProcedure, HINSTANCE instance);
    ~GLRenderer() override;
    GLRenderer(const GLRenderer&) = delete;
    GLRenderer& operator=(const GLRenderer&) = delete;

    bool createWindow(bool fullscreenWanted, int widthWanted, int heightWanted, int bitsWanted,
                      const std::string& titleWanted) override;
    bool killWindow() override;
    bool toggleFullscreen() override;
    bool beginFrame() override;
    bool endFrame() override;
    void resize(int newWidth, int newHeight) override;
    float getWidth() override { return static_cast<float>(width); }
    float getHeight() override { return static_cast<float>(height); }
    bool toggleMipmaps() override;
    bool toggleLinearFiltering() override;
    bool toggleTransparency() override;
    void applyTextureFilter() override;
    RenderMode cycleRenderMode() override;

    /// Fetches the entry points of WGL_EXT_swap_control when the driver has it.
    void loadSwapControl();
    void setVSync(bool on);
    bool isVSyncOn() const;

private:
    [[nodiscard]] bool registerWindowClass();
    [[nodiscard]] bool changeDisplayMode();
    [[nodiscard]] bool openWindow();
    [[nodiscard]] bool createContext();
    bool failCreation(const char* reason);
    void switchVSyncOff();
    void setGlobalState() const;
    void setLightAndMaterial() const;
    void releaseContext();

    std::uint32_t width = 0;
    std::uint32_t height = 0;
    int bits = 0;
    bool mipmaps = true;
    bool linearFiltering = true;
    bool transparency = true;
    std::string title;
    WNDPROC wndProc;
    HGLRC hRC = nullptr;
    HINSTANCE hInstance;
    HWND hWnd = nullptr;
    HDC hDC = nullptr;
    bool fullscreen = false;
    BOOL (*wglSwapIntervalEXT)(int interval) = nullptr;
    int (*wglGetSwapIntervalEXT)() = nullptr;
};
