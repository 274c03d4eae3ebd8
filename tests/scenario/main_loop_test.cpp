// The loop around the rounds: render keys, quitting, resizing, start-up on an odd desktop.

#include "render/camera/frustrum.h"
#include "render/device/renderer.h"
#include "render/view/hud.h"
#include "support/scenario.h"

#include <algorithm>

namespace {

class MainLoopScenario : public FlatLevel {};

/// The sea switches texturing on again at the end of every frame, so only the call itself can be seen, right before the
/// next frame begins.
Script tapT(const char* expectedCall) {
    headless::recordGl(true);
    headless::tapKey('T');
    co_await frames(1);
    const auto& records = headless::glRecords();
    const auto clear = std::ranges::find(records, "glClear", &headless::GlRecord::name);
    EXPECT_TRUE(clear != records.end() && clear != records.begin());
    EXPECT_EQ(std::prev(clear)->name, expectedCall);
    EXPECT_EQ(std::prev(clear)->arguments.at(0), GL_TEXTURE_2D);
    headless::recordGl(false);
}

TEST_F(MainLoopScenario, EveryRenderKeyTogglesOnceAndSaysSo) {
    playRound([]() -> Script {
        const Renderer& renderer = *theModuleManager->getRenderer();
        const auto state = [&] {
            const auto& polygons = headless::glState().settings.polygonMode;
            return std::vector<bool>{polygons[0] == GL_LINE, polygons[1] == GL_LINE, headless::glEnabled(GL_BLEND),
                                     frustumCulling};
        };
        const std::string& message = theModuleManager->getHud()->getMessage();
        struct Tap {
            int key;
            const char* said;
            std::vector<bool> state = {false, false, true, true};
            RenderMode mode = RenderMode::immediate;
        };
        for (const Tap& tap : std::initializer_list<Tap>{
                 {VK_F2, "FPS Counter activated"},
                 {VK_F2, "FPS Counter deactivated"},
                 {VK_F3, "FPS Counter deactivated", {true, true, true, true}},
                 {VK_F3, "FPS Counter deactivated"},
                 {VK_F4, "Texture filtering Nearest"},
                 {VK_F4, "Texture filtering Linear"},
                 {VK_F5, "MipMap deactivated"},
                 {VK_F5, "MipMap activated"},
                 {VK_F6, "Vertex Array Rendering Mode activated", {false, false, true, true}, RenderMode::vertexArray},
                 {VK_F6, "VBO Mode activated - f****** slow", {false, false, true, true}, RenderMode::vertexBuffer},
                 {VK_F6, "Immediate Rendering Mode activated"},
                 {VK_F7, "Font is made with Display Lists"},
                 {VK_F8, "Frustum Culling deactivated", {false, false, true, false}},
                 {VK_F8, "Frustum Culling activated"},
                 {VK_F9, "Transparency off", {false, false, false, true}},
                 {VK_F9, "Transparency on"}}) {
            const std::string before = message;
            headless::keyDown(tap.key);
            co_await frames(5);
            EXPECT_EQ(message, before) << "the key is still held";
            headless::keyUp(tap.key);
            co_await frames(5);
            EXPECT_EQ(message, tap.said);
            EXPECT_EQ(state(), tap.state) << tap.said;
            EXPECT_EQ(renderer.renderMode, tap.mode) << tap.said;
        }
        co_await tapT("glDisable");
        co_await tapT("glEnable");
    });
}

TEST_F(MainLoopScenario, TheFrameFigureIsAMultipleOfFour) {
    playRound([]() -> Script {
        headless::tapKey(VK_F2);
        headless::recordGl(true);
        for (int interval = 0; interval < 3; ++interval) {
            co_await frames(20);
            headless::clearGlRecords();
            co_await frames(1);
            // 250 ms hold 16 frames of 16 ms after the first: 15 to 17 are counted.
            EXPECT_TRUE(isPrinted("60") || isPrinted("64")) << interval;
        }
        headless::recordGl(false);
    });
}

TEST_F(MainLoopScenario, TheScreenSaverIsRefusedAndAResizeMovesTheViewportOnly) {
    playRound([]() -> Script {
        const std::vector<UINT>& passedOn = headless::defaultedMessages();
        for (const WPARAM command : {SC_SCREENSAVE, SC_MONITORPOWER, SC_CLOSE}) {
            headless::post(WM_SYSCOMMAND, command);
            co_await frames(2);
            EXPECT_EQ(std::ranges::count(passedOn, UINT{WM_SYSCOMMAND}), command == SC_CLOSE ? 1 : 0);
        }
        headless::post(WM_SIZE, 0, MAKELPARAM(640, 0));
        co_await frames(1);
        EXPECT_EQ(headless::glState().settings.viewport[2], 640);
        EXPECT_EQ(headless::glState().settings.viewport[3], 1);
        EXPECT_EQ(theModuleManager->getRenderer()->getHeight(), 768.0f);
    });
}

TEST_F(MainLoopScenario, AFullscreenModeThatIsNotThereBecomesAWindow) {
    const int status = playGame(
        []() -> Script {
            co_await frames(3);
            EXPECT_EQ(headless::window()->clientWidth, 1024);
            EXPECT_NE(headless::window()->style & 0x00C00000u, 0u) << "a window with a caption";
        },
        {.prepare = [] { headless::failCall(headless::Call::changeDisplaySettings); }});
    EXPECT_EQ(status, 0);
    ASSERT_EQ(headless::messageBoxes().size(), 1u);
    EXPECT_EQ(headless::messageBoxes()[0].caption, "GL");
}

TEST_F(MainLoopScenario, AWindowThatCannotBeOpenedEndsTheGame) {
    for (const headless::Call call :
         {headless::Call::registerClass, headless::Call::createWindow, headless::Call::getDC,
          headless::Call::choosePixelFormat, headless::Call::setPixelFormat, headless::Call::createContext,
          headless::Call::makeCurrent}) {
        for (const unsigned successes : {0u, 1u}) // the window of the start, then the full-screen one
            startInVain({.prepare = [=] { headless::failCall(call, 1, successes); }});
    }
}

TEST_F(MainLoopScenario, TheGamePlaysOnADriverWithoutExtensions) {
    playRound(
        []() -> Script {
            for (int mode = 0; mode < 3; ++mode) {
                headless::tapKey(VK_F6);
                co_await frames(2);
            }
        },
        {.prepare = [] { headless::setGlExtensions("GL_EXT_bgra"); }});
}

} // namespace
