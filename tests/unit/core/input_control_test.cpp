#include "core/input_control.h"

#include "platform/headless/headless.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

namespace {

class InputControlTest : public testing::Test {
protected:
    TestServices services;
    InputControl& input = *theModuleManager->getInputControl();

    void key(UINT message, int virtualKey) { input.handleMessage(message, static_cast<WPARAM>(virtualKey), 0); }
    void moveCursorTo(int x, int y) {
        SetCursorPos(x, y);
        input.handleMessage(WM_MOUSEMOVE, 0, 0);
    }
};

TEST_F(InputControlTest, APressCountsOnceAtTheRelease) {
    key(WM_KEYDOWN, 'W');
    key(WM_KEYDOWN, 'W'); // auto-repeat
    EXPECT_TRUE(input.isKeyDown('W'));
    EXPECT_FALSE(input.wasKeyPressed('W'));
    key(WM_KEYUP, 'W');
    EXPECT_FALSE(input.isKeyDown('W'));
    EXPECT_TRUE(input.wasKeyPressed('W'));
    EXPECT_TRUE(input.wasKeyPressed('W'));
    input.resetFrame();
    EXPECT_FALSE(input.wasKeyPressed('W'));
    key(WM_KEYUP, 'X'); // was held when the game started
    EXPECT_FALSE(input.wasKeyPressed('X'));
}

TEST_F(InputControlTest, OnlyFiveMessagesAreConsumed) {
    for (const UINT message : {WM_KEYDOWN, WM_KEYUP, WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP})
        EXPECT_TRUE(input.handleMessage(message, 0, 0));
    for (const UINT message : {WM_SYSKEYDOWN, WM_SYSKEYUP, WM_SIZE, WM_CLOSE})
        EXPECT_FALSE(input.handleMessage(message, 'A', 0));
    EXPECT_FALSE(input.isKeyDown('A'));
}

TEST_F(InputControlTest, CodesBeyondTheTablesAreIgnored) {
    EXPECT_TRUE(input.handleMessage(WM_KEYDOWN, 256, 0));
    EXPECT_TRUE(input.handleMessage(WM_KEYUP, ~WPARAM{0}, 0));
    EXPECT_FALSE(input.isKeyDown(256));
    EXPECT_FALSE(input.isKeyDown(-1));
    EXPECT_FALSE(input.wasKeyPressed(100000));
}

TEST_F(InputControlTest, MotionIsGatheredAndHandedOverAtTheFramesEnd) {
    input.setMouseSensitivity(0.005f);
    moveCursorTo(340, 300);
    moveCursorTo(300, 280);
    moveCursorTo(300, 300); // the move that pinning causes
    EXPECT_EQ(input.getMouseDeltaX(), 0.0f);
    EXPECT_EQ(headless::cursor().x, 300);
    input.resetFrame();
    EXPECT_FLOAT_EQ(input.getMouseDeltaX(), 0.2f);
    EXPECT_FLOAT_EQ(input.getMouseDeltaY(), -0.1f);
    input.resetFrame();
    EXPECT_EQ(input.getMouseDeltaX(), 0.0f);
}

TEST_F(InputControlTest, TheCursorIsHiddenAndPinnedWhileTheServiceLives) {
    EXPECT_EQ(headless::cursor().x, 300);
    EXPECT_EQ(headless::cursor().y, 300);
    EXPECT_LT(headless::cursorCount(), 0);
    delete theModuleManager->getInputControl();
    theModuleManager->setInputControl(nullptr);
    EXPECT_EQ(headless::cursorCount(), 0);
}

} // namespace
