// The parts of the SDL desktop that need no SDL.

#include "platform/sdl/box_answer.h"
#include "platform/sdl/frame_clock.h"
#include "platform/sdl/held_keys.h"
#include "platform/sdl/key_map.h"
#include "platform/sdl/letterbox.h"
#include "platform/sdl/tick.h"
#include "platform/sdl/virtual_cursor.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>

TEST(KeyMap, TheGamesKeysAreWhereTheKeyboardHasThem) {
    EXPECT_EQ(virtualKeyOf(26), 'W');
    EXPECT_EQ(virtualKeyOf(4), 'A');
    EXPECT_EQ(virtualKeyOf(22), 'S');
    EXPECT_EQ(virtualKeyOf(7), 'D');
    EXPECT_EQ(virtualKeyOf(20), 'Q');
    EXPECT_EQ(virtualKeyOf(8), 'E');
    EXPECT_EQ(virtualKeyOf(23), 'T');
    EXPECT_EQ(virtualKeyOf(29), 'Z');
    EXPECT_EQ(virtualKeyOf(30), '1');
    EXPECT_EQ(virtualKeyOf(34), '5');
    EXPECT_EQ(virtualKeyOf(38), '9');
    EXPECT_EQ(virtualKeyOf(39), '0');
    EXPECT_EQ(virtualKeyOf(40), VK_RETURN);
    EXPECT_EQ(virtualKeyOf(88), VK_RETURN) << "the keypad's";
    EXPECT_EQ(virtualKeyOf(41), VK_ESCAPE);
    EXPECT_EQ(virtualKeyOf(44), VK_SPACE);
    EXPECT_EQ(virtualKeyOf(59), VK_F2);
    EXPECT_EQ(virtualKeyOf(66), VK_F9);
    EXPECT_EQ(virtualKeyOf(67), VK_F10);
}

TEST(KeyMap, NoKeyStandsForAGameKeyByMistake) {
    std::map<int, int> keys;
    for (int usage = -1; usage < 600; ++usage) {
        const int key = virtualKeyOf(usage);
        ASSERT_GE(key, 0);
        ASSERT_LT(key, 256);
        ++keys[key];
    }
    for (const auto& [key, count] : keys) {
        const bool pairAllowed = key == 0 || key == VK_RETURN || key == VK_MENU || key == 0x10 || key == 0x11;
        EXPECT_TRUE(pairAllowed || count == 1) << "code " << key << " has " << count << " keys";
    }
}

TEST(HeldKeys, AKeyGoesUpTheWayItWentDown) {
    HeldKeys keys;
    EXPECT_EQ(keys.press('W', false).message, WM_KEYDOWN);
    EXPECT_EQ(keys.press('W', true).message, WM_KEYDOWN) << "a repeat while Alt came down";
    EXPECT_EQ(keys.release('W', true).message, WM_KEYUP) << "else the worm would walk on for ever";
    EXPECT_EQ(keys.press('A', true).message, WM_SYSKEYDOWN);
    EXPECT_EQ(keys.release('A', false).message, WM_SYSKEYUP);
    EXPECT_EQ(keys.press(VK_F10, false).message, WM_SYSKEYDOWN);
    EXPECT_EQ(keys.release(VK_F10, false).message, WM_SYSKEYUP);
    EXPECT_EQ(keys.release('S', false).message, WM_KEYUP) << "went down before the window was there";
}

TEST(HeldKeys, LosingTheKeyboardReleasesWhatIsDownOnce) {
    HeldKeys keys;
    keys.press('W', false);
    keys.press('1', true);
    keys.press('D', false);
    keys.release('D', false);
    const auto released = keys.releaseAll();
    ASSERT_EQ(released.size(), 2u);
    EXPECT_EQ(released[0].virtualKey, '1');
    EXPECT_EQ(released[0].message, WM_SYSKEYUP);
    EXPECT_EQ(released[1].virtualKey, 'W');
    EXPECT_EQ(released[1].message, WM_KEYUP);
    EXPECT_TRUE(keys.releaseAll().empty());
}

TEST(Tick, Steps64TimesASecondBy15Or16Milliseconds) {
    int short15 = 0;
    int long16 = 0;
    for (std::uint64_t index = 1; index <= 640; ++index) {
        const std::uint32_t step = tickMilliseconds(index) - tickMilliseconds(index - 1);
        short15 += step == 15 ? 1 : 0;
        long16 += step == 16 ? 1 : 0;
    }
    EXPECT_EQ(short15 + long16, 640);
    EXPECT_EQ(15 * short15 + 16 * long16, 10000) << "ten seconds are ten seconds";
}

TEST(Tick, AStepBeginsWhereTheOneBeforeEnds) {
    for (const std::uint64_t index : {1ull, 63ull, 64ull, 12345ull, 1ull << 38}) {
        EXPECT_EQ(tickIndex(tickStart(index)), index);
        EXPECT_EQ(tickIndex(tickStart(index) - 1), index - 1);
    }
}

TEST(Tick, WrapsAt32BitsWithoutAJump) {
    // The step that 2^32 ms falls into, after 49.7 days.
    const std::uint64_t wrap = tickIndexOfMilliseconds(0xFFFFFFFFu) + 1;
    std::uint32_t before = tickMilliseconds(wrap - 4);
    bool wrapped = false;
    for (std::uint64_t index = wrap - 3; index < wrap + 4; ++index) {
        const std::uint32_t now = tickMilliseconds(index);
        const std::uint32_t step = now - before;
        EXPECT_TRUE(step == 15 || step == 16);
        wrapped = wrapped || now < before;
        before = now;
    }
    EXPECT_TRUE(wrapped);
}

TEST(Tick, AStartAskedForIsTheNearestStepAfter) {
    EXPECT_EQ(tickMilliseconds(tickIndexOfMilliseconds(0)), 0u);
    EXPECT_EQ(tickMilliseconds(tickIndexOfMilliseconds(1000)), 1000u);
    for (const std::uint32_t asked : {1u, 15u, 16u, 17u, 4711u}) {
        const std::uint32_t got = tickMilliseconds(tickIndexOfMilliseconds(asked));
        EXPECT_GE(got, asked);
        EXPECT_LT(got, asked + 16);
    }
}

TEST(FrameClock, AGapOfMoreThanAQuarterOfASecondIsOneStep) {
    FrameClock clock;
    clock.set(1000, 50);
    clock.endFrame(53);
    EXPECT_EQ(clock.read(69), 1019u) << "a quarter of a second passes in full";
    clock.endFrame(69);
    clock.endFrame(69 + 17);
    EXPECT_EQ(clock.lastFrame(), 1020u);
    clock.endFrame(86 + 1280);
    EXPECT_EQ(clock.lastFrame(), 1021u) << "after 20 s";
    EXPECT_EQ(clock.read(1366 + 2), 1023u) << "it runs on from there";
}

TEST(FrameClock, NeverRunsBackwards) {
    FrameClock clock;
    clock.set(1000, 0);
    EXPECT_EQ(clock.read(12), 1012u) << "within a frame that then takes very long";
    EXPECT_EQ(clock.read(400), 1012u);
    clock.endFrame(410);
    EXPECT_EQ(clock.lastFrame(), 1012u);
    EXPECT_EQ(clock.read(411), 1013u);
}

TEST(FrameClock, StandsWhileItIsToldTo) {
    FrameClock clock;
    clock.set(1000, 0);
    clock.stop(5);
    EXPECT_TRUE(clock.isStanding());
    EXPECT_EQ(clock.read(12), 1005u);
    EXPECT_EQ(clock.read(9000), 1005u);
    clock.start(9001);
    EXPECT_EQ(clock.read(9004), 1008u);
    clock.start(9009); // it runs already
    EXPECT_EQ(clock.read(9010), 1014u);
}

TEST(VirtualCursor, MovesFreelyAndIsPutBack) {
    VirtualCursor cursor;
    cursor.place(300, 300);
    cursor.move(-1000, 4000);
    EXPECT_EQ(cursor.position().x, -700);
    EXPECT_EQ(cursor.position().y, 4300) << "no screen edge stops it";
    cursor.move(std::numeric_limits<int>::max(), std::numeric_limits<int>::min());
    cursor.move(std::numeric_limits<int>::max(), std::numeric_limits<int>::min());
    EXPECT_GT(cursor.position().x, 0) << "nor does it wrap";
    EXPECT_LT(cursor.position().y, 0);
    cursor.place(300, 300);
    EXPECT_EQ(cursor.position().x, 300);
}

TEST(VirtualCursor, IsHiddenBelowACountOfZero) {
    VirtualCursor cursor;
    EXPECT_FALSE(cursor.hidden());
    EXPECT_EQ(cursor.show(false), -1);
    EXPECT_EQ(cursor.show(false), -2);
    EXPECT_EQ(cursor.show(true), -1);
    EXPECT_TRUE(cursor.hidden()) << "hidden twice, shown once";
    cursor.show(true);
    EXPECT_FALSE(cursor.hidden());
}

TEST(BoxAnswer, AQuestionThatIsClosedIsANo) {
    const UINT question = MB_YESNO | MB_ICONEXCLAMATION;
    const UINT notice = MB_OK | MB_ICONSTOP;
    EXPECT_EQ(boxAnswer(question, IDYES), IDYES);
    EXPECT_EQ(boxAnswer(question, IDNO), IDNO);
    EXPECT_EQ(boxAnswer(question, -1), IDNO) << "closed by its frame";
    EXPECT_EQ(boxAnswer(question, std::nullopt), IDYES) << "it could not be shown: the game goes on";
    EXPECT_EQ(boxAnswer(notice, IDOK), IDOK);
    EXPECT_EQ(boxAnswer(notice, -1), IDOK);
    EXPECT_EQ(boxAnswer(notice, std::nullopt), IDOK);
}

TEST(Letterbox, KeepsTheProportionsInTheMiddle) {
    const Letterbox wide = letterbox(1024, 768, 1920, 1080);
    EXPECT_EQ(wide.width, 1440);
    EXPECT_EQ(wide.height, 1080);
    EXPECT_EQ(wide.x, 240);
    EXPECT_EQ(wide.y, 0);
    const Letterbox tall = letterbox(1024, 768, 768, 1024);
    EXPECT_EQ(tall.width, 768);
    EXPECT_EQ(tall.height, 576);
    EXPECT_EQ(tall.y, 224);
    const Letterbox exact = letterbox(1024, 768, 1024, 768);
    EXPECT_EQ(exact.width, 1024);
    EXPECT_EQ(exact.x + exact.y, 0);
    const Letterbox nothing = letterbox(1024, 768, 0, 0);
    EXPECT_EQ(nothing.width, 1);
    EXPECT_EQ(nothing.height, 1);
}
