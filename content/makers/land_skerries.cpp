#include "land_shapes.h"

#include "exact_math.h"
#include "land_tools.h"
#include "noise.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// One table mountain: the middle of its territory and how high its top lies.
struct Table {
    double x;
    double z;
    double height;
};

constexpr Table tables[] = {
    {-88, -84, 34}, {-4, -100, 62}, {94, -78, 40}, {-98, 8, 72},  {2, -6, 28},
    {92, 14, 66},   {-76, 98, 44},  {14, 92, 54},  {100, 98, 26},
};

/// Half the width of the arms of the sea.
constexpr double halfChannel = 7.5;

/// What a place in plan belongs to.
struct Territory {
    const Table* table;
    double border; ///< distance to the border with the nearest other territory
};

Territory territoryAt(double x, double z) {
    const Table* nearest = tables;
    double best = std::numeric_limits<double>::max();
    for (const Table& table : tables) {
        const double d = (x - table.x) * (x - table.x) + (z - table.z) * (z - table.z);
        if (d < best) {
            best = d;
            nearest = &table;
        }
    }
    double border = std::numeric_limits<double>::max();
    for (const Table& table : tables) {
        if (&table == nearest)
            continue;
        const double dx = table.x - nearest->x;
        const double dz = table.z - nearest->z;
        const double apart = std::sqrt(dx * dx + dz * dz);
        const double along = (x - nearest->x) * dx + (z - nearest->z) * dz;
        border = std::min(border, apart / 2 - along / apart);
    }
    return {nearest, border};
}

double topOf(const Table& table, double x, double z) {
    const Vec3 p{x, 0, z};
    const double step = 9 * smoothStep(-0.05, 0.2, solidNoise(p * (1 / 34.0), 2011));
    return table.height + step - 4 + 2.5 * solidFractal(p * (1 / 24.0), 3, 2021);
}

/// A span of rock between two tables, from one top to the other.
double bridge(const Vec3& p, const Vec3& a, const Vec3& b) {
    const double body = segmentDistance(p, a, b) - 7 + 1.2 * solidNoise(p * (1 / 9.0), 2031);
    const Vec3 axis = b - a;
    const double f = clamp(dot(p - a, axis) / dot(axis, axis), 0, 1);
    return smoothIntersection(body, p.y - mix(a.y, b.y, f) - 2.5, 2);
}

double bridges(const Vec3& p) {
    double d = bridge(p, {-60, 27, -88}, {-32, 38, -92});
    for (const auto& [a, b] : {std::pair<Vec3, Vec3>{{34, 46, -94}, {64, 36, -86}},
                               {{-92, 32, -52}, {-94, 48, -30}},
                               {{-62, 46, 2}, {-30, 26, -2}},
                               {{36, 26, 2}, {62, 48, 8}},
                               {{6, 25, 28}, {10, 42, 58}},
                               {{96, 44, 44}, {98, 26, 68}},
                               {{-44, 40, 96}, {-16, 46, 94}},
                               {{46, 44, 92}, {70, 24, 96}}})
        d = smoothUnion(d, bridge(p, a, b), 3);
    return d;
}

double skerriesField(const Vec3& p) {
    const double warpX = 9 * solidFractal({p.x / 40, 0.35, p.z / 40}, 2, 2041);
    const double warpZ = 9 * solidFractal({p.x / 40, 0.85, p.z / 40}, 2, 2051);
    const double x = p.x + warpX;
    const double z = p.z + warpZ;
    const Territory place = territoryAt(x, z);
    // Beds of harder and softer stone stand out and step back.
    const double beds = 0.9 * sine(2 * pi * std::max(p.y, 10.0) / 13);
    const double coast = std::max(roundedSquare(x, z, 152), halfChannel - place.border);
    const double wall = coast + seaNotch(p.y) * 0.7 + 2.2 * wallBumps(p, 19, 2061) + beds;
    const double top = (p.y - topOf(*place.table, p.x, p.z)) * 0.85;
    const double land = smoothIntersection(wall, top, 7);
    return smoothIntersection(smoothUnion(land, bridges(p), 4), seaBed - p.y, 3);
}

LandTheme redDesert() {
    LandTheme theme;
    theme.ground = "sand";
    theme.wall = "redstone";
    theme.heights = "moss";
    theme.heightsAbove = 52;
    theme.bareWalls = 1;
    return theme;
}

} // namespace

LandShape needle() {
    LandShape shape = seaStack();
    shape.name = "needle";
    shape.theme = redDesert();
    return shape;
}

LandShape skerries() {
    return {"skerries",
            skerriesField,
            {{-176, -22, -176}, {176, 100, 176}, 4},
            [](const Vec3& p) { return mix(13, 8.1, smoothStep(-11, 3, p.y)); },
            redDesert()};
}
