// The registry, the clock and the keys.

#include "core/base/log.h"
#include "core/scene/scene_node.h"
#include "core/services/input_control.h"
#include "core/services/timer.h"
#include "platform/headless/headless.h"
#include "render/camera/camera.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

namespace {

TEST(ModuleManager, DestroysTheServicesInItsOrderAndEachOnce) {
    static std::string ends;
    {
        const TestServices services;
        auto* const camera = new Camera;
        theModuleManager->getSceneRoot()->addChild(camera);
        theModuleManager->setCamera(camera);
        setLogSink([](const char* text) {
            const std::string line = text;
            if (line.find("estru") != std::string::npos)
                ends += line;
        });
    }
    setLogSink(nullptr);
    EXPECT_EQ(ends, "ModuleManager Destruktor\nSound Control destructed\nHud Destructed\nScene Node Destruktor: root\n"
                    " Calling Camera Destruktor \nScene Node Destruktor: <no name>\nCollision Object Destruct\n"
                    "Frustrum Destruktor\nCollision Object Destruct\nGLTextureLoader Destruktor\n"
                    "TextureManager Destruktor\nGLRenderer Destruktor\nInputConrol Destruktor\nTimer Destruktor\n"
                    "Collision Detection destructed\n");
}

TEST(Timer, MeasuresFramesAcrossTheWrapOfTheTick) {
    const TestServices services;
    const Timer& timer = *theModuleManager->getTimer();
    headless::setTick(0xFFFFFFF8u);
    services.tick(0);
    services.tick(16);
    EXPECT_EQ(timer.getLastTick(), 8u);
    EXPECT_FLOAT_EQ(timer.getFrameTime(), 0.016f);
    services.tick(0);
    EXPECT_EQ(timer.getFrameTime(), 0.0f);
    services.tick(3000);
    EXPECT_FLOAT_EQ(timer.getFrameTime(), 3.0f);
    headless::advance(500);
    EXPECT_EQ(timer.getLastTick(), 3008u);
    EXPECT_EQ(timer.getTickCount(), 3508u);
}

class InputControlTest : public testing::Test {
protected:
    TestServices services;
    InputControl& input = *theModuleManager->getInputControl();

    void key(UINT message, int virtualKey) { input.handleMessage(message, static_cast<WPARAM>(virtualKey), 0); }
};

TEST_F(InputControlTest, OnlyFiveMessagesAreConsumedWhateverTheirCode) {
    for (const WPARAM code : {WPARAM{0}, WPARAM{'A'}, WPARAM{255}, WPARAM{256}, ~WPARAM{0}}) {
        for (const UINT message : {WM_SYSKEYDOWN, WM_SYSKEYUP, WM_SIZE, WM_CLOSE})
            EXPECT_FALSE(input.handleMessage(message, code, 0));
        EXPECT_FALSE(input.isKeyDown(static_cast<int>(code)));
        for (const UINT message : {WM_KEYDOWN, WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP})
            EXPECT_TRUE(input.handleMessage(message, code, 0));
        EXPECT_EQ(input.isKeyDown(static_cast<int>(code)), code < 256);
        EXPECT_TRUE(input.handleMessage(WM_KEYUP, code, 0));
        EXPECT_EQ(input.wasKeyPressed(static_cast<int>(code)), code < 256);
    }
}

TEST_F(InputControlTest, TheHiddenCursorsMotionIsHandedOverAtTheFramesEnd) {
    EXPECT_LT(headless::cursorCount(), 0);
    input.setMouseSensitivity(0.005f);
    for (const int x : {340, 300, 290}) {
        EXPECT_EQ(headless::cursor().x, 300);
        EXPECT_EQ(headless::cursor().y, 300);
        SetCursorPos(x, x == 300 ? 300 : 280);
        key(WM_MOUSEMOVE, 0);
    }
    for (const float share : {0.0f, 1.0f, 0.0f}) {
        EXPECT_FLOAT_EQ(input.getMouseDeltaX(), 0.15f * share);
        EXPECT_FLOAT_EQ(input.getMouseDeltaY(), -0.2f * share);
        input.resetFrame();
    }
    delete theModuleManager->getInputControl();
    theModuleManager->setInputControl(nullptr);
    EXPECT_EQ(headless::cursorCount(), 0);
}

} // namespace
