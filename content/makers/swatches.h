#pragma once

/// The materials in the texture "weapons", a grid of four by four; row 0 is at the first row of the file.
enum class Swatch { olive, darkMetal, wood, red, brightMetal, paper, yellow, black, cord, glow, cyan, hazard, count };

inline constexpr int swatchesAcross = 4;
