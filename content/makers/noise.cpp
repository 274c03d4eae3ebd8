#include "noise.h"

#include <cmath>

namespace {

std::uint64_t scramble(std::uint64_t h) {
    h ^= h >> 30;
    h *= 0xbf58476d1ce4e5b9ULL;
    h ^= h >> 27;
    h *= 0x94d049bb133111ebULL;
    h ^= h >> 31;
    return h;
}

std::uint64_t latticeBits(int x, int y, int z, unsigned seed) {
    std::uint64_t h = 0x9e3779b97f4a7c15ULL * (seed + 1ULL);
    h = scramble(h ^ static_cast<std::uint32_t>(x));
    h = scramble(h + 0x9e3779b97f4a7c15ULL + static_cast<std::uint32_t>(y));
    h = scramble(h + 0x9e3779b97f4a7c15ULL + static_cast<std::uint32_t>(z));
    return h;
}

double toUnit(std::uint64_t bits) {
    return static_cast<double>(bits >> 11) * (1.0 / 9007199254740992.0);
}

double fade(double t) {
    return t * t * t * (t * (t * 6 - 15) + 10);
}

double lerp(double a, double b, double f) {
    return a + (b - a) * f;
}

/// Dot product of one of the twelve edge directions of a cube with (dx, dy, dz).
double edgeGradient(int x, int y, int z, unsigned seed, double dx, double dy, double dz) {
    switch (latticeBits(x, y, z, seed) % 12) {
    case 0:
        return dx + dy;
    case 1:
        return dx - dy;
    case 2:
        return -dx + dy;
    case 3:
        return -dx - dy;
    case 4:
        return dx + dz;
    case 5:
        return dx - dz;
    case 6:
        return -dx + dz;
    case 7:
        return -dx - dz;
    case 8:
        return dy + dz;
    case 9:
        return dy - dz;
    case 10:
        return -dy + dz;
    default:
        return -dy - dz;
    }
}

int wrap(int i, int period) {
    const int r = i % period;
    return r < 0 ? r + period : r;
}

/// Gradient of a repeating lattice point in the plane: one of 64 fixed slopes in each direction.
double planeGradient(int x, int y, unsigned seed, double dx, double dy) {
    const std::uint64_t h = latticeBits(x, y, 0, seed);
    const double gx = static_cast<double>(h & 63) / 31.5 - 1;
    const double gy = static_cast<double>((h >> 6) & 63) / 31.5 - 1;
    return gx * dx + gy * dy;
}

} // namespace

std::uint64_t Random::bits() {
    state += 0x9e3779b97f4a7c15ULL;
    return scramble(state);
}

double Random::unit() {
    return toUnit(bits());
}

double latticeValue(int x, int y, int z, unsigned seed) {
    return toUnit(latticeBits(x, y, z, seed));
}

double solidNoise(const Vec3& p, unsigned seed) {
    const double fx = std::floor(p.x);
    const double fy = std::floor(p.y);
    const double fz = std::floor(p.z);
    const int x = static_cast<int>(fx);
    const int y = static_cast<int>(fy);
    const int z = static_cast<int>(fz);
    const double dx = p.x - fx;
    const double dy = p.y - fy;
    const double dz = p.z - fz;
    double corner[8];
    for (int i = 0; i < 8; ++i) {
        const int ox = i & 1;
        const int oy = (i >> 1) & 1;
        const int oz = i >> 2;
        corner[i] = edgeGradient(x + ox, y + oy, z + oz, seed, dx - ox, dy - oy, dz - oz);
    }
    const double u = fade(dx);
    const double v = fade(dy);
    const double low = lerp(lerp(corner[0], corner[1], u), lerp(corner[2], corner[3], u), v);
    const double high = lerp(lerp(corner[4], corner[5], u), lerp(corner[6], corner[7], u), v);
    return lerp(low, high, fade(dz));
}

double solidFractal(const Vec3& p, int octaves, unsigned seed) {
    double sum = 0;
    double strength = 0.6;
    double scale = 1;
    for (int i = 0; i < octaves; ++i) {
        sum += strength * solidNoise(p * scale, seed + static_cast<unsigned>(i));
        strength *= 0.5;
        scale *= 2;
    }
    return sum;
}

double tileNoise(double x, double y, int period, unsigned seed) {
    const double fx = std::floor(x);
    const double fy = std::floor(y);
    const double dx = x - fx;
    const double dy = y - fy;
    const int x0 = wrap(static_cast<int>(fx), period);
    const int y0 = wrap(static_cast<int>(fy), period);
    const int x1 = wrap(x0 + 1, period);
    const int y1 = wrap(y0 + 1, period);
    const double u = fade(dx);
    const double low = lerp(planeGradient(x0, y0, seed, dx, dy), planeGradient(x1, y0, seed, dx - 1, dy), u);
    const double high = lerp(planeGradient(x0, y1, seed, dx, dy - 1), planeGradient(x1, y1, seed, dx - 1, dy - 1), u);
    return 1.4 * lerp(low, high, fade(dy));
}

double tileFractal(double u, double v, int cells, int octaves, unsigned seed) {
    double sum = 0;
    double strength = 0.6;
    for (int i = 0; i < octaves; ++i) {
        sum += strength * tileNoise(u * cells, v * cells, cells, seed + static_cast<unsigned>(i));
        strength *= 0.5;
        cells *= 2;
    }
    return sum;
}

double tileRidges(double u, double v, int cells, int octaves, unsigned seed) {
    double sum = 0;
    double strength = 0.5;
    for (int i = 0; i < octaves; ++i) {
        sum += strength * 1.6 * std::fabs(tileNoise(u * cells, v * cells, cells, seed + static_cast<unsigned>(i)));
        strength *= 0.5;
        cells *= 2;
    }
    return sum;
}

CellHit tileCells(double u, double v, int cells, unsigned seed) {
    const double x = u * cells;
    const double y = v * cells;
    const int cx = static_cast<int>(std::floor(x));
    const int cy = static_cast<int>(std::floor(y));
    CellHit hit{1e9, 1e9, 0};
    for (int j = cy - 1; j <= cy + 1; ++j) {
        for (int i = cx - 1; i <= cx + 1; ++i) {
            const int wx = wrap(i, cells);
            const int wy = wrap(j, cells);
            const double px = i + latticeValue(wx, wy, 1, seed) - x;
            const double py = j + latticeValue(wx, wy, 2, seed) - y;
            const double d = std::sqrt(px * px + py * py);
            if (d < hit.nearest) {
                hit.second = hit.nearest;
                hit.nearest = d;
                hit.value = latticeValue(wx, wy, 3, seed);
            } else if (d < hit.second) {
                hit.second = d;
            }
        }
    }
    return hit;
}
