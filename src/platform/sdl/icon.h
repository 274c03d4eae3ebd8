#pragma once

#include <SDL.h>

/// Gives the window its picture: a worm that looks over a hill.
void setIcon(SDL_Window* window);
