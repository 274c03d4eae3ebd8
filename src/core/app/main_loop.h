#pragma once

// The entry point's window procedure, its start-up, its one loop and its shutdown.
//
// A start that cannot lead to a game (no level, no teams, no window) shows its message box and ends in order: `start`
// or `run` is false and WinMain's result is `failedStatus`. A game that was played ends with the wParam of whatever
// message came last: 0 for a closed window, any leftover when it was Escape, never a negative one.

#include "platform/win32.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class Font;
class SceneNode;

/// WinMain's result when the game could not go on.
inline constexpr int failedStatus = -1;

/// Routes window messages to the renderer and to input control.
LRESULT CALLBACK WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

class MainLoop {
public:
    explicit MainLoop(HINSTANCE instance);
    ~MainLoop();
    MainLoop(const MainLoop&) = delete;
    MainLoop& operator=(const MainLoop&) = delete;

    /// Builds the services, the window, the first level and the fonts, and starts the music.
    [[nodiscard]] bool start();
    /// Plays until the window is closed or Escape is held; false when a new round could not be loaded.
    [[nodiscard]] bool run();
    /// Tears everything down.
    void shutDown();

    const MSG& getLastMessage() const { return lastMessage; }

private:
    [[nodiscard]] bool openWindow();
    [[nodiscard]] bool loadRandomLevel();
    void createFonts();
    /// False when the queue held WM_QUIT.
    [[nodiscard]] bool pumpMessages();
    void handleKeys();
    void drawScene();
    /// Shows the result of a round with one team or none left; false when the next round could not be loaded.
    [[nodiscard]] bool handleRoundEnd();
    void countFrame();

    HINSTANCE instance;
    std::vector<std::string> levelNames;
    SceneNode* sceneRoot = nullptr;
    std::unique_ptr<Font> fpsFont;
    std::unique_ptr<Font> bannerFont;
    std::unique_ptr<Font> promptFont;
    bool windowOpen = false;
    bool showFps = false;
    bool filledPolygons = true;
    bool texturing = true;
    int fpsFrameCount = 0;
    /// Tick at which the current frames-per-second interval began, ms.
    std::uint32_t fpsTime = 0;
    MSG lastMessage{};
};
