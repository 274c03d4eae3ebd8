#pragma once

#include "../image.h"

// What the ground textures are drawn with. Everything wraps around the borders.

/// Side of a ground texture in pixels.
inline constexpr int groundSide = 256;

/// Colours between a dark, a middle and a light tone; f from 0 to 1.
Color ramp(const Color& dark, const Color& middle, const Color& light, double f);
/// A tapering stroke, for blades and twigs; lengths in pixels, angle in radians.
void stroke(Image& image, double x, double y, double angle, double length, double width, const Color& color);
/// A lit round pebble with a shadow at its lower side.
void pebble(Image& image, double x, double y, double radius, const Color& color);
