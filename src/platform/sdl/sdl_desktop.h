#pragma once

// The desktop on SDL2: one window with a compatibility GL context, the mixer, and the process entry.
//
// Full screen. The desktop keeps its own mode; a mode asked for becomes a borderless window over the whole screen that
// the pointer is on, and the game's picture, drawn into a buffer of the size it asked for, is scaled into the middle of
// it (black bars keep the proportions). So every screen can take every mode, nobody is asked a question at the start,
// and a crash leaves no strange resolution behind. A driver without frame buffer objects shows the picture unscaled in
// a corner.
//
// Alt+Enter and F11 change between that and a window; the context and all it holds stay, and a WM_SIZE tells the size.
//
// Pause (pause.h). The Pause key, P and the loss of the keyboard stop the game at the end of a frame, inside
// SwapBuffers, until a key or a button is pressed; the frame stays on the screen, dimmed. The game hears WM_ACTIVATE
// and that what was held goes up before it, and nothing in it; the tick stands and sounds stand still.
//
// Time. The tick stands in a pause and while the window is minimised, and a gap of more than a quarter of a second
// between two frames is one step of it (frame_clock.h): nobody's turn passes while the game cannot run. A duration
// measured across such a gap inside a frame comes out short.
//
// Input. Keys go by their place on the keyboard; nothing is typed, so input methods are kept out. A touch screen is no
// mouse. When another window gets the keyboard, WM_ACTIVATE says so before whatever is held goes up.
//
// Keys of the desktop's own (desktop_keys.h) besides: F1 lists all keys over a pause, M mutes, + and - change how loud
// effects are and, with Ctrl, the music. Arrow keys and the keypad's 1 to 5 are W, A, S, D and 1 to 5 to the game.
//
// Sound. A device that goes away is replaced (sound_device.h).
//
// Message boxes. A signal to end the program ends it also while it waits for an answer.
//
// A window appears with the first look at the message queue or the first frame, not before: one that is replaced at
// once, as the game's first is, never flashes up. A minimised window makes PeekMessageA nap, or the waiting loop would
// use a whole processor.
//
// Environment:
//   SDL_VIDEODRIVER=name        a driver without a display, such as "offscreen", is used only when it is named here
//   BRACKENMOOR_WINDOWED=1      full screen is given as an ordinary window
//   BRACKENMOOR_MUSIC=N         how loud channel 0 is, where the music plays, in per cent
//   BRACKENMOOR_EFFECTS=N       how loud all other channels are
//   BRACKENMOOR_INVERT_MOUSE=1  the mouse pushed away and pulled near change places
//   BRACKENMOOR_FOCUS_PAUSE=no  no pause when another window gets the keyboard
//   BRACKENMOOR_BOXES=yes|no    message boxes are not shown but answered at once: OK, and Yes or No
//   BRACKENMOOR_TICK=N          the tick stands at N ms until the first frame has been shown and runs on from there:
//                               what is drawn at random while a level loads becomes repeatable
//   BRACKENMOOR_LOG_FILE=file   the diagnostic log is written to this file, line by line

#include "platform/win32.h"

/// Starts SDL's video. False, with one sentence on stderr, when there is no display to show anything on.
[[nodiscard]] bool startDesktop();

/// Where lines about the desktop go, such as what the GL is; each is one without its end. Nowhere until it is set.
void setDesktopLog(void (*log)(const char* line));

/// Gives everything back to the system.
void stopDesktop();

/// What a process ends with whose game gave this result. That is an exit code after WM_QUIT, and
/// some leftover such as a key after any other end in good order. A negative one is a failure.
int exitStatus(int gameResult);
