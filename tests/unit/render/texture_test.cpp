#include "core/data_error.h"
#include "platform/gl.h"
#include "platform/headless/headless.h"
#include "render/gl_texture.h"
#include "render/gl_texture_loader.h"
#include "render/renderer.h"
#include "render/texture_manager.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

namespace {

std::string tga(int width, int height, int bpp, std::string pixels, char imageType = 2) {
    std::string file = {0, 0, imageType, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    for (const int size : {width, height}) {
        file += static_cast<char>(size & 0xFF);
        file += static_cast<char>(size >> 8);
    }
    file += static_cast<char>(bpp);
    file += '\x20';
    return file + pixels;
}

class TextureTest : public testing::Test {
protected:
    TestData data;
    TestServices services;
    TextureManager& manager = *theModuleManager->getTextureManager();
};

TEST_F(TextureTest, LoadsBothDepthsWithRedAndBlueExchanged) {
    data.write("textures/three.tga", tga(2, 1, 24, "abcdef"));
    data.write("textures/four.tga", tga(1, 1, 32, "abcd"));
    Texture* const three = manager.getTexture("three");
    ASSERT_NE(three, nullptr);
    EXPECT_EQ(three->getWidth(), 2);
    EXPECT_EQ(three->getBpp(), 24);
    EXPECT_EQ(three->getFormat(), GL_RGB);
    EXPECT_EQ(three->getName(), "three");
    const auto& uploaded = headless::glState().textures.at(static_cast<GLTexture*>(three)->getTextureId());
    EXPECT_EQ(std::string(uploaded.pixels.begin(), uploaded.pixels.end()), "cbafed");
    EXPECT_EQ(uploaded.width, 2);
    EXPECT_TRUE(uploaded.mipmaps);
    EXPECT_EQ(uploaded.wrapS, GL_REPEAT);
    Texture* const four = manager.getTexture("four");
    ASSERT_NE(four, nullptr);
    EXPECT_EQ(four->getFormat(), GL_RGBA);
}

TEST_F(TextureTest, TheFileIsReadOnceAndAMissingOneIsTriedAgain) {
    EXPECT_EQ(manager.getTexture("late"), nullptr);
    data.write("textures/late.tga", tga(1, 1, 24, "abc"));
    Texture* const texture = manager.getTexture("late");
    ASSERT_NE(texture, nullptr);
    data.remove("textures/late.tga");
    EXPECT_EQ(manager.getTexture("late"), texture);
}

TEST_F(TextureTest, EveryOtherFileIsRefused) {
    const std::string good = tga(2, 2, 32, std::string(16, 'x'));
    for (std::size_t length = 0; length < good.size(); ++length) {
        data.write("textures/bad.tga", good.substr(0, length));
        EXPECT_EQ(manager.getTexture("bad"), nullptr) << length;
    }
    for (const std::string& bad : {tga(2, 2, 24, std::string(12, 'x'), 10), tga(0, 2, 24, "xxx"), tga(2, 0, 24, "xxx"),
                                   tga(2, 2, 16, std::string(8, 'x')), tga(65535, 65535, 32, "few")}) {
        data.write("textures/bad.tga", bad);
        EXPECT_EQ(manager.getTexture("bad"), nullptr);
    }
    std::filesystem::create_directory("textures/folder.tga");
    EXPECT_EQ(manager.getTexture("folder"), nullptr);
}

TEST_F(TextureTest, ARefusalSaysWhatTheFileIs) {
    std::string withId = tga(1, 1, 24, "abc");
    withId[0] = 3;
    std::string withPalette = tga(1, 1, 24, "abc");
    withPalette[1] = 1;
    const std::pair<std::string, const char*> refused[] = {{tga(1, 1, 24, "abc", 10), "run-length"},
                                                           {tga(1, 1, 8, "a", 3), "grey"},
                                                           {tga(1, 1, 8, "a", 1), "palette"},
                                                           {withPalette, "palette"},
                                                           {withId, "image ID"},
                                                           {tga(1, 1, 16, "ab"), "1 x 1 pixels of 16 bits"},
                                                           {tga(2, 3, 24, "abc"), "breaks off"}};
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

TEST_F(TextureTest, BindingSetsTheFiltersOfWhatWasBoundBefore) {
    data.write("textures/a.tga", tga(1, 1, 24, "abc"));
    data.write("textures/b.tga", tga(1, 1, 24, "abc"));
    auto* const a = static_cast<GLTexture*>(manager.getTexture("a"));
    auto* const b = static_cast<GLTexture*>(manager.getTexture("b"));
    theModuleManager->getRenderer()->toggleMipmaps();
    a->bind();
    EXPECT_EQ(headless::glState().settings.units[0].texture, a->getTextureId());
    b->bind();
    EXPECT_EQ(headless::glState().textures.at(a->getTextureId()).minFilter, GL_LINEAR);
}

} // namespace
