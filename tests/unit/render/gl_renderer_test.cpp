#include "render/gl_renderer.h"

#include "core/module_manager.h"
#include "platform/headless/headless.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace {

class GLRendererTest : public testing::Test {
protected:
    TestServices services;
    GLRenderer& renderer = *static_cast<GLRenderer*>(theModuleManager->getRenderer());

    static std::array<GLint, 2> filtersAfter(GLRenderer& of) {
        of.applyTextureFilter();
        const headless::GlTexture& texture =
            headless::glState().textures.at(headless::glState().settings.units[0].texture);
        return {texture.minFilter, texture.magFilter};
    }
};

TEST_F(GLRendererTest, SetsTheFixedState) {
    for (const GLenum capability : std::initializer_list<GLenum>{GL_TEXTURE_2D, GL_DEPTH_TEST, GL_BLEND, GL_CULL_FACE,
                                                                 GL_POLYGON_OFFSET_FILL, GL_LIGHTING, GL_LIGHT0})
        EXPECT_TRUE(headless::glEnabled(capability)) << capability;
    const headless::GlSettings& settings = headless::glState().settings;
    EXPECT_EQ(settings.depthFunction, static_cast<GLenum>(GL_LEQUAL));
    EXPECT_EQ(settings.blendSource, static_cast<GLenum>(GL_SRC_ALPHA));
    EXPECT_EQ(settings.clearColor[2], 0.91f);
    EXPECT_EQ(settings.frontMaterial.shininess, 100.0f);
    EXPECT_EQ(settings.lights[0].position[1], 1000.0f);
    EXPECT_EQ(headless::swapInterval(), 0);
    EXPECT_EQ(headless::requestedPixelFormat().nSize, 40);
    EXPECT_EQ(headless::requestedPixelFormat().cDepthBits, 16);
}

TEST_F(GLRendererTest, FullscreenAndBack) {
    EXPECT_TRUE(renderer.toggleFullscreen());
    EXPECT_EQ(headless::displayMode().width, 1024u);
    EXPECT_EQ(headless::window()->style & WS_POPUP, WS_POPUP);
    EXPECT_EQ(headless::window()->title, "test");
    EXPECT_TRUE(renderer.toggleFullscreen());
    EXPECT_NE(headless::displayMode().width, 1024u);
    EXPECT_EQ(headless::window()->title, "test");
    EXPECT_EQ(headless::openHandles().windows, 1u);
}

TEST_F(GLRendererTest, AModeThatCannotBeSetAsksAndNoMeansNo) {
    headless::failCall(headless::Call::changeDisplaySettings);
    headless::answerNextBox(IDNO);
    EXPECT_FALSE(renderer.toggleFullscreen());
    ASSERT_EQ(headless::messageBoxes().size(), 2u);
    EXPECT_EQ(headless::messageBoxes()[0].caption, "GL");
    EXPECT_EQ(headless::messageBoxes()[1].text, "Programm will now close");
    EXPECT_EQ(headless::messageBoxes()[1].type, MB_OK | MB_ICONSTOP);
}

TEST_F(GLRendererTest, EveryFailureOfTheShutdownIsShownAndPassedOver) {
    for (const headless::Call call :
         {headless::Call::releaseCurrent, headless::Call::deleteContext, headless::Call::releaseDC,
          headless::Call::destroyWindow, headless::Call::unregisterClass})
        headless::failCall(call);
    EXPECT_TRUE(renderer.killWindow());
    std::vector<std::string> texts;
    for (const headless::ShownBox& box : headless::messageBoxes()) {
        EXPECT_EQ(box.caption, "SHUTDOWN ERROR");
        EXPECT_EQ(box.type, MB_OK | MB_ICONINFORMATION);
        texts.push_back(box.text);
    }
    const std::vector<std::string> expected = {"Release of RC and DC failed.", "Release Rendering Context Failed.",
                                               "Release Device Context Failed.", "Could not release hWnd.",
                                               "Could not unregister class."};
    EXPECT_EQ(texts, expected);
    headless::reset();
    renderer.createWindow(false, 1024, 768, 32, "again");
}

TEST_F(GLRendererTest, FiltersFollowTheTwoSettings) {
    GLuint id = 0;
    glGenTextures(1, &id);
    glBindTexture(GL_TEXTURE_2D, id);
    const auto filters = [&] { return filtersAfter(renderer); };
    EXPECT_EQ(filters(), (std::array<GLint, 2>{GL_LINEAR_MIPMAP_LINEAR, GL_LINEAR}));
    EXPECT_FALSE(renderer.toggleLinearFiltering());
    EXPECT_EQ(filters(), (std::array<GLint, 2>{GL_LINEAR_MIPMAP_NEAREST, GL_LINEAR})) << "magnification unchanged";
    EXPECT_FALSE(renderer.toggleMipmaps());
    EXPECT_EQ(filters(), (std::array<GLint, 2>{GL_NEAREST, GL_NEAREST}));
    EXPECT_TRUE(renderer.toggleMipmaps());
    EXPECT_EQ(filters(), (std::array<GLint, 2>{GL_LINEAR_MIPMAP_NEAREST, GL_NEAREST}));
    EXPECT_TRUE(renderer.toggleLinearFiltering());
    EXPECT_FALSE(renderer.toggleMipmaps());
    EXPECT_EQ(filters(), (std::array<GLint, 2>{GL_LINEAR, GL_LINEAR}));
}

TEST_F(GLRendererTest, VerticalSynchronisationComesBackWithTheDesktop) {
    renderer.setVSync(true);
    EXPECT_TRUE(renderer.isVSyncOn());
    renderer.setVSync(false);
    EXPECT_FALSE(renderer.isVSyncOn());
}

TEST_F(GLRendererTest, RenderModesGoRound) {
    EXPECT_EQ(renderer.cycleRenderMode(), 1);
    EXPECT_EQ(renderer.cycleRenderMode(), 2);
    EXPECT_EQ(renderer.cycleRenderMode(), 0);
}

} // namespace
