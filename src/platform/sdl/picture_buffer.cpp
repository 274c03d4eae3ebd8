#include "platform/sdl/picture_buffer.h"

#include "platform/gl.h"
#include "platform/sdl/letterbox.h"

#include <SDL.h>

#include <array>

namespace {

struct Functions {
    PFNGLGENFRAMEBUFFERSPROC genFramebuffers = nullptr;
    PFNGLDELETEFRAMEBUFFERSPROC deleteFramebuffers = nullptr;
    PFNGLDELETERENDERBUFFERSPROC deleteRenderbuffers = nullptr;
    PFNGLBINDFRAMEBUFFERPROC bindFramebuffer = nullptr;
    PFNGLGENRENDERBUFFERSPROC genRenderbuffers = nullptr;
    PFNGLBINDRENDERBUFFERPROC bindRenderbuffer = nullptr;
    PFNGLRENDERBUFFERSTORAGEPROC renderbufferStorage = nullptr;
    PFNGLFRAMEBUFFERRENDERBUFFERPROC framebufferRenderbuffer = nullptr;
    PFNGLCHECKFRAMEBUFFERSTATUSPROC checkFramebufferStatus = nullptr;
    PFNGLBLITFRAMEBUFFERPROC blitFramebuffer = nullptr;
};
Functions functions;

template <class Function>
bool fetch(Function& function, const char* name) {
    function = reinterpret_cast<Function>(SDL_GL_GetProcAddress(name));
    return function != nullptr;
}

bool fetchAll() {
    return SDL_GL_ExtensionSupported("GL_ARB_framebuffer_object") == SDL_TRUE &&
           fetch(functions.genFramebuffers, "glGenFramebuffers") &&
           fetch(functions.deleteFramebuffers, "glDeleteFramebuffers") &&
           fetch(functions.deleteRenderbuffers, "glDeleteRenderbuffers") &&
           fetch(functions.bindFramebuffer, "glBindFramebuffer") &&
           fetch(functions.genRenderbuffers, "glGenRenderbuffers") &&
           fetch(functions.bindRenderbuffer, "glBindRenderbuffer") &&
           fetch(functions.renderbufferStorage, "glRenderbufferStorage") &&
           fetch(functions.framebufferRenderbuffer, "glFramebufferRenderbuffer") &&
           fetch(functions.checkFramebufferStatus, "glCheckFramebufferStatus") &&
           fetch(functions.blitFramebuffer, "glBlitFramebuffer");
}

void attach(GLuint buffer, GLenum storage, GLenum attachment, int width, int height) {
    functions.bindRenderbuffer(GL_RENDERBUFFER, buffer);
    functions.renderbufferStorage(GL_RENDERBUFFER, storage, width, height);
    functions.framebufferRenderbuffer(GL_FRAMEBUFFER, attachment, GL_RENDERBUFFER, buffer);
}

} // namespace

void PictureBuffer::create(int width, int height) {
    if (!fetchAll())
        return;
    functions.genFramebuffers(1, &framebuffer_);
    functions.bindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
    functions.genRenderbuffers(2, renderbuffers_.data());
    attach(renderbuffers_[0], GL_RGBA8, GL_COLOR_ATTACHMENT0, width, height);
    attach(renderbuffers_[1], GL_DEPTH_COMPONENT24, GL_DEPTH_ATTACHMENT, width, height);
    width_ = width;
    height_ = height;
    if (functions.checkFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE)
        return;
    destroy();
}

void PictureBuffer::destroy() {
    if (!exists())
        return;
    leave();
    functions.deleteFramebuffers(1, &framebuffer_);
    functions.deleteRenderbuffers(2, renderbuffers_.data());
    framebuffer_ = 0;
}

void PictureBuffer::leave() const {
    if (exists())
        functions.bindFramebuffer(GL_FRAMEBUFFER, 0);
}

void PictureBuffer::present(int screenWidth, int screenHeight) const {
    const Letterbox box = letterbox(width_, height_, screenWidth, screenHeight);
    functions.bindFramebuffer(GL_READ_FRAMEBUFFER, framebuffer_);
    functions.bindFramebuffer(GL_DRAW_FRAMEBUFFER, 0);
    glPushAttrib(GL_COLOR_BUFFER_BIT | GL_SCISSOR_BIT);
    glDisable(GL_SCISSOR_TEST);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glClearColor(0, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    functions.blitFramebuffer(0, 0, width_, height_, box.x, box.y, box.x + box.width, box.y + box.height,
                              GL_COLOR_BUFFER_BIT, GL_LINEAR);
    glPopAttrib();
}

void PictureBuffer::bind() const {
    if (exists())
        functions.bindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
}
