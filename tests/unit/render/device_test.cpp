// The window's renderer and the textures.

#include "core/base/data_error.h"
#include "platform/headless/headless.h"
#include "render/device/gl_renderer.h"
#include "render/device/gl_texture.h"
#include "render/device/texture_manager.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace {

std::string tga(int width, int height, int bits, const std::string& pixels, int type = 2, int id = 0, int palette = 0) {
    std::string file;
    for (const int byte : {id, palette, type, 0, 0, 0, 0, 0, 0, 0, 0, 0, width & 0xFF, width >> 8, height & 0xFF,
                           height >> 8, bits, 0x20})
        file += static_cast<char>(byte);
    return file + pixels;
}

class Device : public testing::Test {
protected:
    TestData data;
    TestServices services;
    GLRenderer& renderer = *static_cast<GLRenderer*>(theModuleManager->getRenderer());
    TextureManager& manager = *theModuleManager->getTextureManager();
};

TEST_F(Device, FullscreenAndBackSetTheFixedStateAndKeepTheTitle) {
    for (const bool full : {true, false}) {
        EXPECT_TRUE(renderer.toggleFullscreen());
        EXPECT_EQ(headless::displayMode().width == 1024u, full);
        EXPECT_EQ((headless::window()->style & WS_POPUP) != 0, full);
        EXPECT_EQ(headless::window()->title, "test");
        EXPECT_EQ(headless::openHandles().windows, 1u);
        for (const GLenum capability : std::initializer_list<GLenum>{
                 GL_TEXTURE_2D, GL_DEPTH_TEST, GL_BLEND, GL_CULL_FACE, GL_POLYGON_OFFSET_FILL, GL_LIGHTING, GL_LIGHT0})
            EXPECT_TRUE(headless::glEnabled(capability)) << capability;
        const headless::GlSettings& settings = headless::glState().settings;
        EXPECT_EQ(settings.depthFunction, static_cast<GLenum>(GL_LEQUAL));
        EXPECT_EQ(settings.blendSource, static_cast<GLenum>(GL_SRC_ALPHA));
        EXPECT_EQ(settings.clearColor[2], 0.91f);
        EXPECT_EQ(settings.shininess, 100.0f);
        EXPECT_EQ(headless::requestedPixelFormat().cDepthBits, 16);
        EXPECT_EQ(settings.lights[0].position[1], 1000.0f);
        EXPECT_FALSE(renderer.isVSyncOn());
        renderer.setVSync(true);
        EXPECT_TRUE(renderer.isVSyncOn());
    }
}

TEST_F(Device, EveryFailureIsShownAndThoseOfTheShutdownArePassedOver) {
    headless::failCall(headless::Call::changeDisplaySettings);
    headless::answerNextBox(IDNO);
    EXPECT_FALSE(renderer.toggleFullscreen());
    ASSERT_EQ(headless::messageBoxes().size(), 2u);
    EXPECT_EQ(headless::messageBoxes()[0].caption, "GL");
    EXPECT_EQ(headless::messageBoxes()[1].text, "Programm will now close");
    EXPECT_EQ(headless::messageBoxes()[1].type, MB_OK | MB_ICONSTOP);
    headless::reset();
    renderer.createWindow(false, 1024, 768, 32, "again");
    for (const headless::Call call :
         {headless::Call::releaseCurrent, headless::Call::deleteContext, headless::Call::releaseDC,
          headless::Call::destroyWindow, headless::Call::unregisterClass})
        headless::failCall(call);
    EXPECT_TRUE(renderer.killWindow());
    std::string texts;
    for (const headless::ShownBox& box : headless::messageBoxes()) {
        EXPECT_EQ(box.caption, "SHUTDOWN ERROR");
        EXPECT_EQ(box.type, MB_OK | MB_ICONINFORMATION);
        texts += box.text;
    }
    EXPECT_EQ(texts, "Release of RC and DC failed.Release Rendering Context Failed.Release Device Context Failed."
                     "Could not release hWnd.Could not unregister class.");
    headless::reset();
    renderer.createWindow(false, 1024, 768, 32, "again");
}

TEST_F(Device, FiltersFollowTheTwoSettings) {
    GLuint id = 0;
    glGenTextures(1, &id);
    glBindTexture(GL_TEXTURE_2D, id);
    const struct {
        bool (GLRenderer::*toggle)();
        bool on;
        GLint smaller, larger;
    } steps[] = {
        {&GLRenderer::toggleLinearFiltering, false, GL_LINEAR_MIPMAP_NEAREST, GL_LINEAR}, // magnification unchanged
        {&GLRenderer::toggleMipmaps, false, GL_NEAREST, GL_NEAREST},
        {&GLRenderer::toggleMipmaps, true, GL_LINEAR_MIPMAP_NEAREST, GL_NEAREST},
        {&GLRenderer::toggleLinearFiltering, true, GL_LINEAR_MIPMAP_LINEAR, GL_NEAREST},
        {&GLRenderer::toggleMipmaps, false, GL_LINEAR, GL_LINEAR},
    };
    for (const auto& [toggle, on, smaller, larger] : steps) {
        EXPECT_EQ((renderer.*toggle)(), on);
        renderer.applyTextureFilter();
        EXPECT_EQ(headless::glState().textures.at(id).minFilter, smaller);
        EXPECT_EQ(headless::glState().textures.at(id).magFilter, larger);
    }
}

TEST_F(Device, LoadsBothDepthsOnceWithRedAndBlueExchanged) {
    const struct {
        std::string file;
        int width, bits, format;
        const char* uploaded;
    } cases[] = {{tga(3, 1, 24, "abcdefghi"), 3, 24, GL_RGB, "cbafedihg"},
                 {tga(1, 2, 32, "abcdefgh"), 1, 32, GL_RGBA, "cbadgfeh"}};
    for (const auto& [file, width, bits, format, pixels] : cases) {
        const std::string name = std::to_string(bits);
        EXPECT_EQ(manager.getTexture(name), nullptr) << "not there yet";
        data.write("textures/" + name + ".tga", file);
        Texture* const texture = manager.getTexture(name);
        ASSERT_NE(texture, nullptr);
        data.remove("textures/" + name + ".tga");
        EXPECT_EQ(manager.getTexture(name), texture);
        EXPECT_EQ(texture->getWidth(), width);
        EXPECT_EQ(texture->getBpp(), bits);
        EXPECT_EQ(texture->getFormat(), format);
        const auto& uploaded = headless::glState().textures.at(static_cast<GLTexture*>(texture)->getTextureId());
        EXPECT_EQ(std::string(uploaded.pixels.begin(), uploaded.pixels.end()), pixels);
        EXPECT_EQ(uploaded.width, width);
        EXPECT_TRUE(uploaded.mipmaps);
        EXPECT_EQ(uploaded.wrapS, GL_REPEAT);
    }
}

TEST_F(Device, ARefusalSaysWhatTheFileIs) {
    const std::pair<std::string, const char*> refused[] = {
        {tga(1, 1, 24, "abc", 10), "run-length"},    {tga(1, 1, 8, "a", 3), "grey"},
        {tga(1, 1, 8, "a", 1), "palette"},           {tga(1, 1, 24, "abc", 2, 0, 1), "palette"},
        {tga(1, 1, 24, "abc", 2, 3), "image ID"},    {tga(1, 1, 16, "ab"), "1 x 1 pixels of 16 bits"},
        {tga(0, 2, 24, "abc"), "0 x 2 pixels"},      {tga(2, 0, 24, "abc"), "2 x 0 pixels"},
        {tga(65535, 65535, 32, "few"), "breaks off"}};
    for (const auto& [file, reason] : refused) {
        data.write("textures/odd.tga", file);
        forgetDataFaults();
        testing::internal::CaptureStderr();
        EXPECT_EQ(manager.getTexture("odd"), nullptr);
        const std::string said = testing::internal::GetCapturedStderr();
        EXPECT_TRUE(said.find("textures/odd.tga: ") != std::string::npos && said.find(reason) != std::string::npos)
            << said << " lacks " << reason;
    }
}

TEST_F(Device, BindingSetsTheFiltersOfWhatWasBoundBefore) {
    data.write("textures/a.tga", tga(1, 1, 24, "abc"));
    data.write("textures/b.tga", tga(1, 1, 24, "abc"));
    auto* const a = static_cast<GLTexture*>(manager.getTexture("a"));
    auto* const b = static_cast<GLTexture*>(manager.getTexture("b"));
    renderer.toggleMipmaps();
    a->bind();
    EXPECT_EQ(headless::glState().settings.units[0].texture, a->getTextureId());
    b->bind();
    EXPECT_EQ(headless::glState().textures.at(a->getTextureId()).minFilter, GL_LINEAR);
}

} // namespace
