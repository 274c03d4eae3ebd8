#include "render/device/gl_texture.h"

#include "core/base/log.h"
#include "core/services/module_manager.h"
#include "platform/gl.h"
#include "render/device/renderer.h"

GLTexture::GLTexture(const std::string& textureName) : Texture(textureName) {
    logLine("GLTexture %s \n", textureName.c_str());
}

GLTexture::~GLTexture() {
    logLine("GLTexture destruct %s \n", getName().c_str());
    glDeleteTextures(1, &textureId);
}

bool GLTexture::bind() {
    theModuleManager->getRenderer()->applyTextureFilter();
    glBindTexture(GL_TEXTURE_2D, textureId);
    return true;
}
