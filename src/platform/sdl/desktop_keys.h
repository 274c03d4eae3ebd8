#pragma once

// The keys that are the desktop layer's own: the pause, the list of keys, the window's kind and the volume.

#include "platform/sdl/overlay.h"

#include <SDL.h>

/// Whether a key that goes down is the desktop's, and no business of the game's; then it has done what it does.
bool takeDesktopKey(const SDL_KeyboardEvent& event);

/// Writes all keys, the game's too, by the names that they have on the player's keyboard.
void listKeys(const OverlayText& text);
