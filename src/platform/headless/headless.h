#pragma once

// A desktop made of nothing, for tests, tools and benchmarks: what the game calls of win32.h, fsound.h and gl.h works,
// nothing is seen or heard, and what a real desktop decides by itself is decided by the caller here.
//
// The clock stands still until it is moved. Messages come from the script alone, with these exceptions, all of them as
// a real desktop does: ShowWindow posts WM_ACTIVATE and WM_SIZE, a cursor that moved under a visible window posts
// WM_MOUSEMOVE, DestroyWindow discards the messages of its window. The cursor is not stopped by the edges of the
// screen. GL calls work without a context too (tools have no window); every context has a state of its own, so what was
// made in one is gone in the next. reset() makes the desktop as new; one process can run any number of scenarios.
// Wrong use of a call (a dead handle, an unbalanced matrix stack, a vertex outside glBegin) is written down in
// problems(); so is a use that the game never makes and that is not kept here.

#include "platform/headless/gl_state.h"
#include "platform/win32.h"

#include <functional>
#include <string>
#include <vector>

namespace headless {

/// A fresh desktop: no windows, streams, messages, hooks, records or failures to come; tick 0, cursor at (0, 0).
void reset();

/// What was used wrongly since the last reset, one sentence each; the first 200.
const std::vector<std::string>& problems();

// The clock.

/// Sets the tick, in ms.
void setTick(DWORD tick);
/// Moves the tick on; it wraps at 2^32.
void advance(DWORD milliseconds);
/// Moves the clock on by this much in every SwapBuffers; 0 after a reset.
void setFrameDuration(DWORD milliseconds);

// Driving a program from inside.

using Hook = std::function<void()>;
/// Called in every SwapBuffers, after the clock has moved: the frame is complete and still the game's.
void onFrame(Hook hook);
/// Called whenever PeekMessageA finds the queue empty; what it posts is handed out by the same call.
void onIdle(Hook hook);
/// Number of SwapBuffers calls since the reset.
unsigned frameCount();
/// A loop that looks into the empty queue this often without a frame in between gets WM_QUIT, so that no test hangs.
inline constexpr unsigned idleLimit = 100000;

// Messages and input. They go to the newest window.

void post(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
void keyDown(int virtualKey);
void keyUp(int virtualKey);
/// Down and up at once.
void tapKey(int virtualKey);
void leftButton(bool down);
/// Moves the cursor by pixels.
void moveMouse(int dx, int dy);
/// Gives the window a new client size.
void resizeWindow(int width, int height);
void minimiseWindow();
void restoreWindow();
/// What a click on the close button does.
void closeWindow();

// The screen.

struct DisplayMode {
    DWORD width = 1920;
    DWORD height = 1080;
    DWORD bits = 32;
};
/// The mode in force; the default of the record is the desktop's own.
DisplayMode displayMode();
POINT cursor();
/// The count behind ShowCursor; the cursor shows while it is 0 or more.
int cursorCount();

struct Window {
    std::string className;
    std::string title;
    DWORD style = 0;
    int clientWidth = 0;
    int clientHeight = 0;
    bool visible = false;
};
/// The newest window that is still open, or null.
const Window* window();
/// The description given to the last ChoosePixelFormat.
const PIXELFORMATDESCRIPTOR& requestedPixelFormat();

/// Handles that nobody has closed yet. All zero after an orderly end.
struct OpenHandles {
    std::size_t classes = 0;
    std::size_t windows = 0;
    std::size_t deviceContexts = 0;
    std::size_t renderingContexts = 0;
    std::size_t streams = 0;
    bool operator==(const OpenHandles&) const = default;
};
OpenHandles openHandles();

/// Messages that reached DefWindowProcA, in order.
const std::vector<UINT>& defaultedMessages();
/// Gives the room they took back as well.
void clearDefaultedMessages();

// Message boxes.

struct ShownBox {
    std::string text;
    std::string caption;
    UINT type = 0;
    int answer = 0;
};
const std::vector<ShownBox>& messageBoxes();
/// Answers the next box that nobody has answered yet; without an answer a box gets Yes where it offers that, else OK.
void answerNextBox(int button);

// Failures to order.

enum class Call {
    registerClass,
    unregisterClass,
    changeDisplaySettings,
    createWindow,
    destroyWindow,
    getDC,
    releaseDC,
    choosePixelFormat,
    setPixelFormat,
    createContext,
    makeCurrent,    ///< wglMakeCurrent with a context
    releaseCurrent, ///< wglMakeCurrent without one
    deleteContext,
};
/// The call fails `times` times after it has succeeded `successes` times from now on. What it should close stays open.
void failCall(Call call, unsigned times = 1, unsigned successes = 0);

/// Swap interval of the current context, as WGL_EXT_swap_control sets it; 1 for a fresh context.
int swapInterval();

// Sound.

struct SoundCall {
    std::string call; ///< name of the function
    std::string file; ///< file of the stream, empty where none is concerned
    int channel = -1; ///< the channel asked for, -1 where none is concerned
    unsigned int mode = 0;
    bool operator==(const SoundCall&) const = default;
};
const std::vector<SoundCall>& soundCalls();
/// Gives the room they took back as well.
void clearSoundCalls();
/// File of the stream started last on the channel and neither stopped nor replaced; sounds do not end by themselves.
std::string playingOn(int channel);

} // namespace headless
