// The parts of the SDL desktop that need no SDL.

#include "platform/sdl/box_answer.h"
#include "platform/sdl/frame_clock.h"
#include "platform/sdl/held_keys.h"
#include "platform/sdl/key_map.h"
#include "platform/sdl/letterbox.h"
#include "platform/sdl/tick.h"
#include "platform/sdl/virtual_cursor.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <map>
#include <optional>
#include <utility>
#include <vector>

TEST(KeyMap, TheGamesKeysAreWhereTheKeyboardHasThem) {
    const std::pair<int, int> keys[] = {{26, 'W'},      {4, 'A'},    {22, 'S'},       {7, 'D'},        {20, 'Q'},
                                        {8, 'E'},       {23, 'T'},   {29, 'Z'},       {30, '1'},       {34, '5'},
                                        {38, '9'},      {39, '0'},   {40, VK_RETURN}, {88, VK_RETURN}, {41, VK_ESCAPE},
                                        {44, VK_SPACE}, {59, VK_F2}, {66, VK_F9},     {67, VK_F10}};
    for (const auto& [usage, key] : keys)
        EXPECT_EQ(virtualKeyOf(usage), key) << usage;
    const std::pair<int, int> twins[] = {{82, 'W'}, {80, 'A'}, {81, 'S'}, {79, 'D'}, {89, '1'}, {93, '5'}, {26, 'W'}};
    for (const auto& [usage, key] : twins)
        EXPECT_EQ(gameKeyOf(usage), key) << usage;
    EXPECT_NE(gameKeyOf(94), '6') << "the keypad's 6";
}

TEST(KeyMap, NoKeyStandsForAGameKeyByMistake) {
    std::map<int, int> keys;
    for (int usage = -1; usage < 600; ++usage)
        ++keys[virtualKeyOf(usage)];
    EXPECT_GE(keys.begin()->first, 0);
    EXPECT_LT(keys.rbegin()->first, 256);
    for (const auto& [key, count] : keys) {
        const bool pairAllowed = key == 0 || key == VK_RETURN || key == VK_MENU || key == 0x10 || key == 0x11;
        EXPECT_TRUE(pairAllowed || count == 1) << "code " << key << " has " << count << " keys";
    }
}

TEST(HeldKeys, AKeyGoesUpTheWayItWentDownAlsoWhenTheKeyboardIsLost) {
    HeldKeys keys;
    const auto expectPress = [&keys](int key, bool alt, UINT message) {
        EXPECT_EQ(keys.press(key, alt).message, message) << key;
    };
    const auto expectRelease = [&keys](int key, bool alt, UINT message) {
        EXPECT_EQ(keys.release(key, alt).message, message) << key;
    };
    expectPress('W', false, WM_KEYDOWN);
    expectPress('W', true, WM_KEYDOWN); // a repeat while Alt came down
    expectRelease('W', true, WM_KEYUP); // else the worm would walk on for ever
    expectPress('A', true, WM_SYSKEYDOWN);
    expectRelease('A', false, WM_SYSKEYUP);
    expectPress(VK_F10, false, WM_SYSKEYDOWN);
    expectRelease(VK_F10, false, WM_SYSKEYUP);
    expectRelease('S', false, WM_KEYUP); // went down before the window was there
    expectPress('W', false, WM_KEYDOWN);
    expectPress('1', true, WM_SYSKEYDOWN);
    std::vector<std::pair<int, UINT>> released;
    for (const HeldKeys::Message& message : keys.releaseAll())
        released.emplace_back(message.virtualKey, message.message);
    EXPECT_EQ(released, (std::vector<std::pair<int, UINT>>{{'1', WM_SYSKEYUP}, {'W', WM_KEYUP}}));
    EXPECT_TRUE(keys.releaseAll().empty());
}

TEST(Tick, Steps64TimesASecondBy15Or16MillisecondsAndWrapsWithoutAJump) {
    EXPECT_EQ(tickMilliseconds(640) - tickMilliseconds(0), 10000u) << "ten seconds are ten seconds";
    // The step that 2^32 ms falls into, after 49.7 days.
    const std::uint64_t wrap = tickIndexOfMilliseconds(0xFFFFFFFFu) + 1;
    EXPECT_LT(tickMilliseconds(wrap + 4), tickMilliseconds(wrap - 4));
    for (const std::uint64_t first : {std::uint64_t{1}, wrap - 4, std::uint64_t{1} << 38}) {
        for (std::uint64_t index = first; index < first + 64; ++index) {
            const std::uint32_t step = tickMilliseconds(index + 1) - tickMilliseconds(index);
            EXPECT_TRUE(step == 15 || step == 16) << index;
            EXPECT_EQ(tickIndex(tickStart(index)), index);
            EXPECT_EQ(tickIndex(tickStart(index) - 1), index - 1) << "a step begins where the one before ends";
        }
    }
    for (const std::uint32_t asked : {0u, 1u, 15u, 16u, 17u, 1000u, 4711u}) {
        const std::uint64_t index = tickIndexOfMilliseconds(asked);
        EXPECT_GE(tickMilliseconds(index), asked) << "the nearest step after";
        EXPECT_TRUE(index == 0 || tickMilliseconds(index - 1) < asked) << asked;
    }
}

TEST(FrameClock, ALongGapIsOneStepAndItNeverRunsBackwardsAndStandsWhenToldTo) {
    FrameClock clock;
    clock.set(1000, 50);
    clock.endFrame(53);
    EXPECT_EQ(clock.read(69), 1019u) << "a quarter of a second passes in full";
    clock.endFrame(69);
    clock.endFrame(69 + 17);
    EXPECT_EQ(clock.lastFrame(), 1020u);
    clock.endFrame(86 + 1280);
    EXPECT_EQ(clock.lastFrame(), 1021u) << "after 20 s";
    EXPECT_EQ(clock.read(1366 + 12), 1033u) << "within a frame that then takes very long";
    EXPECT_EQ(clock.read(1366 + 400), 1033u);
    clock.endFrame(1776);
    EXPECT_EQ(clock.lastFrame(), 1033u);
    EXPECT_EQ(clock.read(1777), 1034u) << "it runs on from there";
    clock.stop(1780);
    EXPECT_TRUE(clock.isStanding());
    EXPECT_EQ(clock.read(1785), 1037u);
    EXPECT_EQ(clock.read(9000), 1037u);
    clock.start(9001);
    EXPECT_EQ(clock.read(9004), 1040u);
    clock.start(9009); // it runs already
    EXPECT_EQ(clock.read(9010), 1046u);
}

TEST(VirtualCursor, MovesFreelyAndIsHiddenBelowACountOfZero) {
    VirtualCursor cursor;
    cursor.place(300, 200);
    cursor.move(-1000, 4000);
    EXPECT_TRUE(cursor.position().x == -700 && cursor.position().y == 4200) << "no screen edge stops it";
    for (int i = 0; i < 2; ++i)
        cursor.move(std::numeric_limits<int>::max(), std::numeric_limits<int>::min());
    EXPECT_TRUE(cursor.position().x > 0 && cursor.position().y < 0) << "nor does it wrap";
    EXPECT_FALSE(cursor.hidden());
    for (const bool on : {false, false, true}) {
        cursor.show(on);
        EXPECT_TRUE(cursor.hidden());
    }
    EXPECT_EQ(cursor.show(true), 0);
    EXPECT_FALSE(cursor.hidden());
}

TEST(BoxAnswer, AQuestionThatIsClosedIsANo) {
    const UINT question = MB_YESNO | MB_ICONEXCLAMATION;
    // Answered, closed by its frame, and not shown: then the game goes on.
    const std::pair<std::optional<int>, int> answers[] = {
        {IDYES, IDYES}, {IDNO, IDNO}, {-1, IDNO}, {std::nullopt, IDYES}};
    for (const auto& [button, answer] : answers) {
        EXPECT_EQ(boxAnswer(question, button), answer);
        EXPECT_EQ(boxAnswer(MB_OK | MB_ICONSTOP, button), IDOK);
    }
}

TEST(Letterbox, KeepsTheProportionsInTheMiddle) {
    const std::array<int, 6> cases[] = {{1920, 1080, 240, 0, 1440, 1080},
                                        {768, 1024, 0, 224, 768, 576},
                                        {1024, 768, 0, 0, 1024, 768},
                                        {0, 0, 0, 0, 1, 1}};
    for (const auto& [screenWidth, screenHeight, x, y, width, height] : cases) {
        const Letterbox box = letterbox(1024, 768, screenWidth, screenHeight);
        EXPECT_EQ((std::array{box.x, box.y, box.width, box.height}), (std::array{x, y, width, height}));
    }
}
