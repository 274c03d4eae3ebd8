#pragma once

#include "field.h"

// What the landscape's fields are put together from.

/// Depth that standing land reaches down to.
inline constexpr double seaBed = -13;

/// Extra distance of the coast below the high-water line: the sea has eaten a notch into every foot of land.
double seaNotch(double y);
/// Bumps of walls. Constant below the notch, so that no bulge becomes a ledge near the water.
double wallBumps(const Vec3& p, double size, unsigned seed);
/// A round hill: height at its middle, falling to 0 at about twice the radius.
double hill(double x, double z, double middleX, double middleZ, double radius, double height);
/// Heights drawn towards steps, with even ground on each step and a bank between.
double terraced(double height, double step);
/// Distance-like value to a square with bulging sides and round corners, negative within.
double roundedSquare(double x, double z, double half);
