// Device contexts, rendering contexts and the buffer swap of the headless desktop.

#include "platform/headless/desktop_internal.h"
#include "platform/headless/gl_internal.h"

using namespace headless;
using namespace headless::detail;

namespace {

DeviceContext* find(HDC deviceContext, const char* call) {
    const auto found = desktop().deviceContexts.find(deviceContext);
    if (found != desktop().deviceContexts.end())
        return &found->second;
    addProblem(std::string(call) + ": there is no such device context");
    return nullptr;
}

BOOL setSwapInterval(int interval) {
    state().swapInterval = interval;
    return TRUE;
}

int getSwapInterval() {
    return state().swapInterval;
}

} // namespace

HDC GetDC(HWND window) {
    Desktop& now = desktop();
    if (fails(Call::getDC))
        return nullptr;
    if (!now.windows.contains(window)) {
        addProblem("GetDC: there is no such window");
        return nullptr;
    }
    const HDC handle = asHandle<HDC>(now.nextHandle++);
    now.deviceContexts[handle] = {window, false};
    return handle;
}

int ReleaseDC(HWND window, HDC deviceContext) {
    if (fails(Call::releaseDC))
        return 0;
    const DeviceContext* found = find(deviceContext, "ReleaseDC");
    if (found == nullptr || found->window != window)
        return 0;
    desktop().deviceContexts.erase(deviceContext);
    return 1;
}

int ChoosePixelFormat(HDC deviceContext, const PIXELFORMATDESCRIPTOR* format) {
    if (fails(Call::choosePixelFormat) || find(deviceContext, "ChoosePixelFormat") == nullptr)
        return 0;
    desktop().requestedFormat = *format;
    return 1;
}

BOOL SetPixelFormat(HDC deviceContext, int index, const PIXELFORMATDESCRIPTOR*) {
    DeviceContext* found = nullptr;
    if (fails(Call::setPixelFormat) || (found = find(deviceContext, "SetPixelFormat")) == nullptr || index != 1)
        return FALSE;
    found->formatSet = true;
    const auto window = desktop().windows.find(found->window);
    if (window != desktop().windows.end())
        window->second.info.pixelFormat = index;
    return TRUE;
}

BOOL SwapBuffers(HDC deviceContext) {
    Desktop& now = desktop();
    const bool known = find(deviceContext, "SwapBuffers") != nullptr;
    endGlFrame();
    ++now.frames;
    now.idleLooks = 0;
    now.tick += now.frameDuration;
    if (now.frameHook) {
        const Hook hook = now.frameHook; // it may replace itself
        hook();
    }
    return known ? TRUE : FALSE;
}

HGLRC wglCreateContext(HDC deviceContext) {
    Desktop& now = desktop();
    const DeviceContext* found = nullptr;
    if (fails(Call::createContext) || (found = find(deviceContext, "wglCreateContext")) == nullptr)
        return nullptr;
    if (!found->formatSet) {
        addProblem("wglCreateContext: the device context has no pixel format");
        return nullptr;
    }
    const HGLRC handle = asHandle<HGLRC>(now.nextHandle++);
    now.renderingContexts[handle] = std::make_unique<GlState>(freshState());
    return handle;
}

BOOL wglMakeCurrent(HDC deviceContext, HGLRC renderingContext) {
    Desktop& now = desktop();
    if (renderingContext == nullptr) {
        if (fails(Call::releaseCurrent))
            return FALSE;
        now.current = nullptr;
        makeCurrent(nullptr);
        return TRUE;
    }
    const auto found = now.renderingContexts.find(renderingContext);
    if (fails(Call::makeCurrent) || find(deviceContext, "wglMakeCurrent") == nullptr)
        return FALSE;
    if (found == now.renderingContexts.end()) {
        addProblem("wglMakeCurrent: there is no such rendering context");
        return FALSE;
    }
    now.current = renderingContext;
    makeCurrent(found->second.get());
    return TRUE;
}

BOOL wglDeleteContext(HGLRC renderingContext) {
    Desktop& now = desktop();
    if (fails(Call::deleteContext))
        return FALSE;
    if (now.current == renderingContext) {
        now.current = nullptr;
        makeCurrent(nullptr);
    }
    if (now.renderingContexts.erase(renderingContext) > 0)
        return TRUE;
    addProblem("wglDeleteContext: there is no such rendering context");
    return FALSE;
}

PROC wglGetProcAddress(LPCSTR name) {
    const std::string_view wanted = name;
    const std::string_view extensions = reinterpret_cast<const char*>(glGetString(GL_EXTENSIONS));
    const auto offers = [&](std::string_view extension) { return extensions.find(extension) != extensions.npos; };
    FunctionPointer found = nullptr;
    if (offers("GL_ARB_vertex_buffer_object"))
        found = bufferFunction(wanted);
    if (found == nullptr && offers("GL_ARB_multitexture"))
        found = multitextureFunction(wanted);
    if (offers("WGL_EXT_swap_control")) {
        if (wanted == "wglSwapIntervalEXT")
            found = reinterpret_cast<FunctionPointer>(&setSwapInterval);
        else if (wanted == "wglGetSwapIntervalEXT")
            found = reinterpret_cast<FunctionPointer>(&getSwapInterval);
    }
    return reinterpret_cast<PROC>(found);
}
