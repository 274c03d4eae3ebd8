// Device contexts, rendering contexts and the buffer swap of the headless desktop.

#include "platform/headless/desktop_internal.h"

using namespace headless;
using namespace headless::detail;

namespace {

using FunctionPointer = void (*)();

struct ExtensionFunction {
    std::string_view name;
    std::string_view extension;
    FunctionPointer pointer;
};

BOOL setSwapInterval(int interval) {
    state().swapInterval = interval;
    return TRUE;
}

int getSwapInterval() {
    return state().swapInterval;
}

template <class Function>
ExtensionFunction offered(const char* name, const char* extension, Function* function) {
    return {name, extension, reinterpret_cast<FunctionPointer>(function)};
}

const std::array extensionFunctions = {
    offered("glGenBuffersARB", "GL_ARB_vertex_buffer_object", genBuffers),
    offered("glDeleteBuffersARB", "GL_ARB_vertex_buffer_object", deleteBuffers),
    offered("glBindBufferARB", "GL_ARB_vertex_buffer_object", bindBuffer),
    offered("glBufferDataARB", "GL_ARB_vertex_buffer_object", bufferData),
    offered("glActiveTextureARB", "GL_ARB_multitexture", activeTexture),
    offered("glMultiTexCoord2fARB", "GL_ARB_multitexture", multiTexCoord2f),
    offered("wglSwapIntervalEXT", "WGL_EXT_swap_control", setSwapInterval),
    offered("wglGetSwapIntervalEXT", "WGL_EXT_swap_control", getSwapInterval),
};

} // namespace

HDC GetDC(HWND window) {
    if (fails(Call::getDC) || find(desktop().windows, window, "GetDC") == nullptr)
        return nullptr;
    return desktop().deviceContexts.emplace(newHandle<HDC>(), DeviceContext{window}).first->first;
}

int ReleaseDC(HWND window, HDC deviceContext) {
    if (fails(Call::releaseDC))
        return 0;
    const DeviceContext* const found = find(desktop().deviceContexts, deviceContext, "ReleaseDC");
    if (found == nullptr || found->window != window)
        return 0;
    desktop().deviceContexts.erase(deviceContext);
    return 1;
}

int ChoosePixelFormat(HDC deviceContext, const PIXELFORMATDESCRIPTOR* format) {
    if (fails(Call::choosePixelFormat) || find(desktop().deviceContexts, deviceContext, "ChoosePixelFormat") == nullptr)
        return 0;
    desktop().requestedFormat = *format;
    return 1;
}

BOOL SetPixelFormat(HDC deviceContext, int index, const PIXELFORMATDESCRIPTOR*) {
    if (fails(Call::setPixelFormat))
        return FALSE;
    DeviceContext* const found = find(desktop().deviceContexts, deviceContext, "SetPixelFormat");
    if (found == nullptr || index != 1)
        return FALSE;
    found->formatSet = true;
    return TRUE;
}

BOOL SwapBuffers(HDC deviceContext) {
    Desktop& now = desktop();
    const bool known = find(now.deviceContexts, deviceContext, "SwapBuffers") != nullptr;
    endGlFrame();
    ++now.frames;
    now.idleLooks = 0;
    now.tick += now.frameDuration;
    if (const Hook hook = now.frameHook) // a copy: it may replace itself
        hook();
    return known ? TRUE : FALSE;
}

HGLRC wglCreateContext(HDC deviceContext) {
    if (fails(Call::createContext))
        return nullptr;
    const DeviceContext* const found = find(desktop().deviceContexts, deviceContext, "wglCreateContext");
    if (found == nullptr)
        return nullptr;
    if (!found->formatSet) {
        addProblem("wglCreateContext: the device context has no pixel format");
        return nullptr;
    }
    return desktop().renderingContexts.try_emplace(newHandle<HGLRC>()).first->first;
}

BOOL wglMakeCurrent(HDC deviceContext, HGLRC renderingContext) {
    if (fails(renderingContext == nullptr ? Call::releaseCurrent : Call::makeCurrent))
        return FALSE;
    GlState* wanted = nullptr;
    if (renderingContext != nullptr) {
        wanted = find(desktop().renderingContexts, renderingContext, "wglMakeCurrent");
        if (wanted == nullptr || find(desktop().deviceContexts, deviceContext, "wglMakeCurrent") == nullptr)
            return FALSE;
    }
    makeCurrent(wanted);
    return TRUE;
}

BOOL wglDeleteContext(HGLRC renderingContext) {
    if (fails(Call::deleteContext))
        return FALSE;
    const GlState* const found = find(desktop().renderingContexts, renderingContext, "wglDeleteContext");
    if (found == nullptr)
        return FALSE;
    if (found == traffic.context)
        makeCurrent(nullptr);
    desktop().renderingContexts.erase(renderingContext);
    return TRUE;
}

PROC wglGetProcAddress(LPCSTR name) {
    const std::string_view extensions = reinterpret_cast<const char*>(glGetString(GL_EXTENSIONS));
    for (const ExtensionFunction& function : extensionFunctions)
        if (function.name == name && extensions.find(function.extension) != extensions.npos)
            return reinterpret_cast<PROC>(function.pointer);
    return nullptr;
}
