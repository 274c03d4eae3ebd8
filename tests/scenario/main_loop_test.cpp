// The loop around the rounds: render keys, quitting, resizing, start-up on an odd desktop.

#include "core/module_manager.h"
#include "platform/headless/headless.h"
#include "render/frustrum.h"
#include "render/hud.h"
#include "render/renderer.h"
#include "support/play.h"
#include "support/test_data.h"

#include <gtest/gtest.h>

namespace {

class MainLoopScenario : public testing::Test {
protected:
    MainLoopScenario() { data.writeFlatLevel({{"A", {"A1"}, 1}, {"B", {"B1"}, 1}}); }

    TestData data;
};

const std::string& message() {
    return theModuleManager->getHud()->getMessage();
}

Script tapAndExpect(int key, const char* text) {
    headless::tapKey(key);
    co_await frames(2);
    EXPECT_EQ(message(), text);
}

/// The sea switches texturing on again at the end of every frame, so only the call itself can be seen, right before the
/// next frame begins.
Script tapT(const char* expectedCall) {
    headless::recordGl(true);
    headless::tapKey('T');
    co_await frames(1);
    const auto& records = headless::glRecords();
    bool found = false;
    for (std::size_t i = 1; i < records.size(); ++i)
        found = found || (records[i].name == "glClear" && records[i - 1].name == expectedCall &&
                          records[i - 1].arguments[0] == GL_TEXTURE_2D);
    EXPECT_TRUE(found) << expectedCall;
    headless::recordGl(false);
}

TEST_F(MainLoopScenario, EveryRenderKeyTogglesAndSaysSo) {
    EXPECT_EQ(playGame([]() -> Script {
                  co_await frames(3);
                  co_await tapAndExpect(VK_F2, "FPS Counter activated");
                  co_await tapAndExpect(VK_F2, "FPS Counter deactivated");
                  co_await tapAndExpect(VK_F4, "Texture filtering Nearest");
                  co_await tapAndExpect(VK_F4, "Texture filtering Linear");
                  co_await tapAndExpect(VK_F5, "MipMap deactivated");
                  co_await tapAndExpect(VK_F5, "MipMap activated");
                  co_await tapAndExpect(VK_F6, "Vertex Array Rendering Mode activated");
                  EXPECT_EQ(theModuleManager->getRenderer()->renderMode, renderVertexArray);
                  co_await tapAndExpect(VK_F6, "VBO Mode activated - f****** slow");
                  co_await tapAndExpect(VK_F6, "Immediate Rendering Mode activated");
                  co_await tapAndExpect(VK_F7, "Font is made with Display Lists");
                  co_await tapAndExpect(VK_F8, "Frustum Culling deactivated");
                  EXPECT_FALSE(frustumCulling);
                  co_await tapAndExpect(VK_F8, "Frustum Culling activated");
                  EXPECT_TRUE(headless::glEnabled(GL_BLEND));
                  co_await tapAndExpect(VK_F9, "Transparency off");
                  EXPECT_FALSE(headless::glEnabled(GL_BLEND));
                  co_await tapAndExpect(VK_F9, "Transparency on");

                  co_await tapT("glDisable");
                  co_await tapT("glEnable");

                  headless::tapKey(VK_F3);
                  co_await frames(2);
                  EXPECT_EQ(headless::glState().settings.polygonMode[0], static_cast<GLenum>(GL_LINE));
                  headless::tapKey(VK_F3);
                  co_await frames(2);
                  EXPECT_EQ(headless::glState().settings.polygonMode[1], static_cast<GLenum>(GL_FILL));
              }),
              0);
    for (const std::string& problem : headless::problems())
        ADD_FAILURE() << problem;
}

TEST_F(MainLoopScenario, AKeyHeldForManyFramesTogglesOnce) {
    playGame([]() -> Script {
        co_await frames(3);
        headless::keyDown(VK_F2);
        co_await frames(10);
        EXPECT_EQ(message(), "");
        headless::keyUp(VK_F2);
        co_await frames(10);
        EXPECT_EQ(message(), "FPS Counter activated");
    });
}

TEST_F(MainLoopScenario, TheFrameFigureIsAMultipleOfFour) {
    playGame([]() -> Script {
        headless::tapKey(VK_F2);
        co_await frames(40);
        headless::recordGl(true);
        co_await frames(1);
        // 250 ms hold 16 frames of 16 ms after the first: 15 to 17 are counted.
        bool found = false;
        for (const std::string& text : printedTexts())
            found = found || text == "60" || text == "64";
        EXPECT_TRUE(found);
        headless::recordGl(false);
    });
}

TEST_F(MainLoopScenario, EscapeEndsTheGameInOrderWithANonNegativeStatus) {
    const int status = playGame([]() -> Script {
        co_await frames(3);
        headless::keyDown(VK_ESCAPE);
        co_await frames(100);
        ADD_FAILURE() << "the game went on";
    });
    EXPECT_GE(status, 0);
    EXPECT_EQ(headless::openHandles(), headless::OpenHandles{});
    EXPECT_EQ(headless::cursorCount(), 0);
    EXPECT_EQ(headless::displayMode().width, headless::DisplayMode{}.width);
}

TEST_F(MainLoopScenario, TheScreenSaverIsRefusedAndOtherCommandsPassThrough) {
    playGame([]() -> Script {
        co_await frames(3);
        headless::post(WM_SYSCOMMAND, SC_SCREENSAVE);
        headless::post(WM_SYSCOMMAND, SC_MONITORPOWER);
        co_await frames(2);
        for (const UINT defaulted : headless::defaultedMessages())
            EXPECT_NE(defaulted, WM_SYSCOMMAND);
        headless::post(WM_SYSCOMMAND, SC_CLOSE);
        co_await frames(2);
        EXPECT_EQ(headless::defaultedMessages().back(), WM_SYSCOMMAND);
    });
}

TEST_F(MainLoopScenario, AResizeMovesTheViewportOnly) {
    playGame([]() -> Script {
        co_await frames(3);
        headless::post(WM_SIZE, 0, MAKELPARAM(640, 0));
        co_await frames(1);
        EXPECT_EQ(headless::glState().settings.viewport[2], 640);
        EXPECT_EQ(headless::glState().settings.viewport[3], 1);
        EXPECT_EQ(theModuleManager->getRenderer()->getHeight(), 768.0f);
    });
}

TEST_F(MainLoopScenario, AFullscreenModeThatIsNotThereBecomesAWindow) {
    PlaySettings settings;
    settings.prepare = [] { headless::failCall(headless::Call::changeDisplaySettings); };
    const int status = playGame(
        []() -> Script {
            co_await frames(3);
            EXPECT_NE(headless::window(), nullptr);
            if (headless::window() == nullptr)
                co_return;
            EXPECT_EQ(headless::window()->clientWidth, 1024);
            EXPECT_NE(headless::window()->style & 0x00C00000u, 0u) << "a window with a caption";
        },
        settings);
    EXPECT_EQ(status, 0);
    ASSERT_EQ(headless::messageBoxes().size(), 1u);
    EXPECT_EQ(headless::messageBoxes()[0].caption, "GL");
}

TEST_F(MainLoopScenario, AWindowThatCannotBeOpenedEndsTheGame) {
    const auto startWith = [](headless::Call failing, unsigned successes) {
        PlaySettings settings;
        settings.prepare = [=] { headless::failCall(failing, 1, successes); };
        return playGame(
            []() -> Script {
                co_await frames(1);
                ADD_FAILURE() << "the game started";
            },
            settings);
    };
    for (const headless::Call call :
         {headless::Call::registerClass, headless::Call::createWindow, headless::Call::getDC,
          headless::Call::choosePixelFormat, headless::Call::setPixelFormat, headless::Call::createContext,
          headless::Call::makeCurrent}) {
        for (const unsigned successes : {0u, 1u}) { // the window of the start, then the full-screen one
            EXPECT_LT(startWith(call, successes), 0);
            ASSERT_GE(headless::messageBoxes().size(), 1u);
            EXPECT_EQ(headless::messageBoxes().back().caption, "ERROR");
        }
    }
}

TEST_F(MainLoopScenario, TheGamePlaysOnADriverWithoutExtensions) {
    PlaySettings settings;
    settings.prepare = [] { headless::setGlExtensions("GL_EXT_bgra"); };
    const int status = playGame(
        []() -> Script {
            co_await frames(3);
            for (int mode = 0; mode < 3; ++mode) {
                headless::tapKey(VK_F6);
                co_await frames(2);
            }
        },
        settings);
    EXPECT_EQ(status, 0);
    for (const std::string& problem : headless::problems())
        ADD_FAILURE() << problem;
}

} // namespace
