// The GL context of the window and the buffer swap.

#include "platform/gl.h"
#include "platform/sdl/backend.h"
#include "platform/sdl/frame.h"

#include <array>
#include <string>
#include <string_view>
#include <utility>

namespace {

// There is one window and one context, so a handle only has to be told from null.
HDC deviceContextOf(HWND window) {
    return reinterpret_cast<HDC>(window);
}

HWND windowOf(HDC deviceContext) {
    return reinterpret_cast<HWND>(deviceContext);
}

bool isCurrent(HDC deviceContext) {
    return backend().windowOpen && windowOf(deviceContext) == &backend().window;
}

BOOL setSwapInterval(int interval) {
    return SDL_GL_SetSwapInterval(interval) == 0 ? TRUE : FALSE;
}

int getSwapInterval() {
    return SDL_GL_GetSwapInterval();
}

/// GLX hands out an address for every name, so the extension is asked first.
const char* extensionOf(std::string_view name) {
    constexpr std::array<std::string_view, 4> buffers = {"glGenBuffersARB", "glBindBufferARB", "glBufferDataARB",
                                                         "glDeleteBuffersARB"};
    for (const std::string_view known : buffers)
        if (name == known)
            return "GL_ARB_vertex_buffer_object";
    const bool multitexture = name == "glActiveTextureARB" || name == "glMultiTexCoord2fARB";
    return multitexture ? "GL_ARB_multitexture" : nullptr;
}

void logDriver() {
    if (backend().log == nullptr)
        return;
    for (const auto& [what, name] :
         {std::pair{"vendor", GL_VENDOR}, {"renderer", GL_RENDERER}, {"version", GL_VERSION}})
        if (const auto* const text = reinterpret_cast<const char*>(glGetString(static_cast<GLenum>(name))))
            backend().log((std::string("GL ") + what + ": " + text).c_str());
}

} // namespace

HDC GetDC(HWND window) {
    return window != nullptr && window->window != nullptr ? deviceContextOf(window) : nullptr;
}

int ReleaseDC(HWND window, HDC deviceContext) {
    return window != nullptr && windowOf(deviceContext) == window ? 1 : 0;
}

int ChoosePixelFormat(HDC deviceContext, const PIXELFORMATDESCRIPTOR*) {
    return isCurrent(deviceContext) ? 1 : 0;
}

BOOL SetPixelFormat(HDC deviceContext, int index, const PIXELFORMATDESCRIPTOR*) {
    return isCurrent(deviceContext) && index == 1 ? TRUE : FALSE;
}

BOOL SwapBuffers(HDC deviceContext) {
    if (!isCurrent(deviceContext)) {
        waitForTick();
        return FALSE;
    }
    showWaitingWindow();
    showFrame();
    waitForTick();
    return TRUE;
}

HGLRC wglCreateContext(HDC deviceContext) {
    if (!isCurrent(deviceContext) || backend().context != nullptr)
        return nullptr;
    backend().context = SDL_GL_CreateContext(backend().window.window);
    return reinterpret_cast<HGLRC>(backend().context);
}

BOOL wglMakeCurrent(HDC deviceContext, HGLRC renderingContext) {
    Backend& state = backend();
    if (renderingContext == nullptr)
        return SDL_GL_MakeCurrent(nullptr, nullptr) == 0 ? TRUE : FALSE;
    if (!isCurrent(deviceContext) || SDL_GL_MakeCurrent(state.window.window, state.context) != 0)
        return FALSE;
    // Frames are paced by the tick; waiting for the screen as well would only make them late.
    SDL_GL_SetSwapInterval(0);
    logDriver();
    fitFrame();
    return TRUE;
}

BOOL wglDeleteContext(HGLRC renderingContext) {
    Backend& state = backend();
    if (renderingContext == nullptr || reinterpret_cast<SDL_GLContext>(renderingContext) != state.context)
        return FALSE;
    forgetFrame();
    SDL_GL_DeleteContext(state.context);
    state.context = nullptr;
    return TRUE;
}

PROC wglGetProcAddress(LPCSTR name) {
    using Function = void (*)();
    const std::string_view wanted = name;
    if (wanted == "wglSwapIntervalEXT")
        return reinterpret_cast<PROC>(reinterpret_cast<Function>(&setSwapInterval));
    if (wanted == "wglGetSwapIntervalEXT")
        return reinterpret_cast<PROC>(reinterpret_cast<Function>(&getSwapInterval));
    const char* extension = extensionOf(wanted);
    if (extension != nullptr && SDL_GL_ExtensionSupported(extension) != SDL_TRUE)
        return nullptr;
    return reinterpret_cast<PROC>(SDL_GL_GetProcAddress(name));
}
