#include "support/scenario.h"

void playRound(const std::function<Script()>& script, const PlaySettings& settings) {
    const int status = playGame(
        [&script]() -> Script {
            co_await frames(60);
            co_await script();
        },
        settings);
    EXPECT_GE(status, 0);
    EXPECT_EQ(headless::openHandles(), headless::OpenHandles{});
    EXPECT_EQ(headless::cursorCount(), 0);
    EXPECT_EQ(headless::displayMode().width, headless::DisplayMode{}.width);
    EXPECT_TRUE(headless::messageBoxes().empty());
    EXPECT_EQ(headless::problems(), std::vector<std::string>());
}

std::string startInVain(const PlaySettings& settings) {
    const auto script = []() -> Script {
        co_await frames(1);
        ADD_FAILURE() << "the game started";
    };
    EXPECT_LT(playGame(script, settings), 0);
    EXPECT_EQ(headless::openHandles(), headless::OpenHandles{});
    const headless::ShownBox last =
        headless::messageBoxes().empty() ? headless::ShownBox{} : headless::messageBoxes().back();
    EXPECT_EQ(last.caption, "ERROR");
    return last.text;
}
