#include "render/device/gl_renderer.h"

#include "core/base/log.h"
#include "core/services/module_manager.h"
#include "platform/gl.h"
#include "platform/wgl_extension.h"

#include <cstring>

GLRenderer::GLRenderer(WNDPROC windowProcedure, HINSTANCE instance) : wndProc(windowProcedure), hInstance(instance) {
    theModuleManager->setRenderer(this);
    logLine("GLRenderer Konstruktor\n");
}

GLRenderer::~GLRenderer() {
    logLine("GLRenderer Destruktor\n");
}

bool GLRenderer::toggleFullscreen() {
    killWindow();
    // A copy: createWindow stores its argument in the very string it would be reading.
    const std::string sameTitle = title;
    return createWindow(!fullscreen, static_cast<int>(width), static_cast<int>(height), bits, sameTitle);
}

bool GLRenderer::beginFrame() {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glLoadIdentity();
    return true;
}

bool GLRenderer::endFrame() {
    SwapBuffers(hDC);
    return true;
}

void GLRenderer::resize(int newWidth, int newHeight) {
    glViewport(0, 0, newWidth, newHeight == 0 ? 1 : newHeight);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

bool GLRenderer::toggleMipmaps() {
    mipmaps = !mipmaps;
    return mipmaps;
}

bool GLRenderer::toggleLinearFiltering() {
    linearFiltering = !linearFiltering;
    return linearFiltering;
}

bool GLRenderer::toggleTransparency() {
    if (transparency)
        glDisable(GL_BLEND);
    else
        glEnable(GL_BLEND);
    transparency = !transparency;
    return transparency;
}

void GLRenderer::applyTextureFilter() {
    if (mipmaps) {
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER,
                        linearFiltering ? GL_LINEAR_MIPMAP_LINEAR : GL_LINEAR_MIPMAP_NEAREST);
        return;
    }
    const GLint filter = linearFiltering ? GL_LINEAR : GL_NEAREST;
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filter);
}

RenderMode GLRenderer::cycleRenderMode() {
    renderMode = static_cast<RenderMode>((static_cast<int>(renderMode) + 1) % 3);
    return renderMode;
}

void GLRenderer::loadSwapControl() {
    const auto* const extensions = reinterpret_cast<const char*>(glGetString(GL_EXTENSIONS));
    if (extensions == nullptr || std::strstr(extensions, "WGL_EXT_swap_control") == nullptr)
        return;
    wglSwapIntervalEXT = getExtension<BOOL (*)(int)>("wglSwapIntervalEXT");
    wglGetSwapIntervalEXT = getExtension<int (*)()>("wglGetSwapIntervalEXT");
}

void GLRenderer::setVSync(bool on) {
    if (wglSwapIntervalEXT != nullptr)
        wglSwapIntervalEXT(on ? 1 : 0);
}

bool GLRenderer::isVSyncOn() const {
    return wglGetSwapIntervalEXT != nullptr && wglGetSwapIntervalEXT() > 0;
}
