#pragma once

// What the sources of the SDL desktop share.

#include "platform/sdl/held_keys.h"
#include "platform/sdl/pause.h"
#include "platform/sdl/virtual_cursor.h"
#include "platform/win32.h"

#include <SDL.h>

#include <deque>
#include <string>

struct HWND__ {
    SDL_Window* window = nullptr;
    WNDPROC procedure = nullptr;
    std::string className;
    int askedWidth = 0; ///< of the client area the game asked for
    int askedHeight = 0;
    int width = 0; ///< what the game believes it to be: as asked for, or as the user has made it since
    int height = 0;
    bool fullscreen = false;
    bool toBeShown = false; ///< by the next look at the queue or the next frame
    bool minimised = false;
};

/// Everything the process has of a desktop; there is one window at most.
struct Backend {
    std::string className; ///< the registered window class, empty when there is none
    WNDPROC classProcedure = nullptr;
    bool fullscreenMode = false; ///< set by ChangeDisplaySettingsA
    bool windowOpen = false;
    HWND__ window;
    SDL_GLContext context = nullptr;

    std::deque<MSG> queue;
    bool quitPending = false;
    int quitCode = 0;
    MSG lastTaken{};

    VirtualCursor cursor;
    HeldKeys keys;
    bool leftButton = false;
    bool invertedMouse = false;
    bool focused = false;
    bool toldActive = false; ///< what the game has heard of that
    Pause pause = Pause::no;
    void (*log)(const char* line) = nullptr;
    bool listsKeys = false; ///< while paused
};
Backend& backend();

void postMessage(UINT message, WPARAM wParam, LPARAM lParam);
/// Captures or frees the real pointer, as focus and the cursor's visibility want it.
void updateCapture();
/// Lets the clock stand or run, as minimising and the pause want it.
void updateClock();
/// Tells the game whether its window is the active one, unless it knows.
void tellActive(bool active);
/// Tells the game that its window is not active, and lets go of all that is held: it hears of its loss first, so that
/// it can tell what is taken away from what is let go.
void letEverythingGo();
/// Changes between full screen and a window; the context stays.
void switchFullscreen();
/// Shows a window that waits for it.
void showWaitingWindow();
/// Turns one SDL event into messages.
void translateEvent(const SDL_Event& event);

/// Sets the clock up from the environment.
void startClock();
/// Lets the clock stand, and run on from there.
void stopClock();
void resumeClock();
/// Sleeps until the tick has moved on since the last call.
void waitForTick();

bool environmentIs(const char* name, const char* value);
/// The percentage in a variable of the environment; 100 when there is none.
int environmentPercent(const char* name);
