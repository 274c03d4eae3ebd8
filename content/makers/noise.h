#pragma once

#include "vec3.h"

#include <cstdint>

// Repeatable noise for shapes and textures. Every function is pure: the same arguments give the same bits. Functions
// with a period repeat exactly after that many lattice cells, so a texture drawn from them tiles without a seam.

/// A small random generator with its own state, for scattering strokes and pebbles.
class Random {
public:
    explicit Random(std::uint64_t seed) : state(seed) {}
    /// Next 64 random bits.
    std::uint64_t bits();
    /// Next number in [0, 1).
    double unit();
    /// Next number in [low, high).
    double range(double low, double high) { return low + (high - low) * unit(); }

private:
    std::uint64_t state;
};

/// Random number in [0, 1) belonging to a lattice point.
double latticeValue(int x, int y, int z, unsigned seed);

/// Smooth gradient noise in space, about -1 to 1, one feature per unit.
double solidNoise(const Vec3& p, unsigned seed);
/// Sum of octaves of solidNoise, each twice as fine and half as strong, about -1 to 1.
double solidFractal(const Vec3& p, int octaves, unsigned seed);

/// Gradient noise in the plane with period cells to the repeat, about -1 to 1.
double tileNoise(double x, double y, int period, unsigned seed);
/// Octaves of tileNoise over the unit square; cells is the number of cells of the first octave.
double tileFractal(double u, double v, int cells, int octaves, unsigned seed);
/// As tileFractal with every octave folded at zero: 0 on the creases, up to about 1.
double tileRidges(double u, double v, int cells, int octaves, unsigned seed);

/// What tileCells finds: distances to the nearest and second nearest scattered point in cells, and the nearest one's
/// number.
struct CellHit {
    double nearest;
    double second;
    double value;
};
/// Nearest of one jittered point per cell, cells to the unit square, repeating.
CellHit tileCells(double u, double v, int cells, unsigned seed);
