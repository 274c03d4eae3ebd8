#pragma once

// How a frame reaches the screen: through a picture buffer where the screen has another size than the game asked for.
// The window's context is current.

/// Gives the game's drawing the place it needs, now that the window or its context is new or has changed its kind.
void fitFrame();
/// Forgets everything of a context that goes.
void forgetFrame();
/// Shows what was drawn, and stays there for as long as the game is paused.
void showFrame();
