#pragma once

// The pause. It is asked for at any time and begins at the end of a frame, which stays on the screen; then nothing is
// run of the game until a key or a button is pressed, which the game does not hear of. The tick stands, sounds stand
// where they are, the pointer is free.

#include <functional>

/// How near a pause is.
enum class Pause {
    no,
    unlessFocused, ///< at the end of the frame, if the keyboard is not back by then
    due,           ///< at the end of the frame
    on,
};

/// The player wants one, perhaps to see the list of keys: what is held goes up, after the game was told that the window
/// is no longer active.
void askForPause(bool withKeys);
/// Whether the frame that has been drawn is the last before one.
bool pauseIsDue();
/// Stays until it is over. `draw` shows the picture, as often as the window needs it.
void pauseGame(const std::function<void()>& draw);
