#include "land_shapes.h"

#include "exact_math.h"
#include "land_tools.h"
#include "noise.h"

#include <algorithm>

namespace {

/// Signed distance-like value to the coast line in plan, negative on land.
double moorholmCoast(double x, double z) {
    const Vec3 p{x, 0, z};
    const double wide = x * 0.97;
    const double rounded = std::sqrt(std::sqrt(wide * wide * wide * wide + z * z * z * z));
    const double blob = rounded - 127 + 22 * solidFractal(p * (1 / 75.0), 3, 11);
    const Vec3 bay{x - 112, 0, z + 116};
    return smoothIntersection(blob, 52 - length(bay) + 7 * solidNoise(p * (1 / 22.0), 31), 14);
}

double moorholmHeight(double x, double z, double coast) {
    const Vec3 p{x, 0, z};
    const double rolling = 13 * solidFractal(p * (1 / 52.0), 3, 41);
    double height = 25 + rolling + hill(x, z, -58, -50, 46, 56) + hill(x, z, 62, 68, 44, 44) +
                    hill(x, z, -78, 82, 30, 34) + hill(x, z, 84, -14, 26, 30) + hill(x, z, 22, -92, 26, 26) -
                    hill(x, z, 6, 10, 30, 16) - hill(x, z, -20, 96, 24, 12);
    height = mix(height, terraced(height, 15), 0.6);
    // Towards the shore the land sinks to low cliffs, except where the shore is wild.
    const double wild = smoothStep(-0.2, 0.25, solidNoise(p * (1 / 80.0), 61));
    const double shore = mix(12.5 + 0.15 * rolling, std::min(height, 40.0), wild);
    return mix(shore, height, smoothStep(2, 42, -coast));
}

double moorholmTunnel(const Vec3& p) {
    const double bore = std::min(segmentDistance(p, {-118, 27, -62}, {-62, 25, -44}),
                                 segmentDistance(p, {-62, 25, -44}, {-2, 31, -36}));
    return 11.5 + 1.5 * solidNoise(p * (1 / 9.0), 71) - bore;
}

double moorholmField(const Vec3& p) {
    const double coast = moorholmCoast(p.x, p.z);
    const double wall = coast * 0.9 + seaNotch(p.y) + 3.2 * wallBumps(p, 17, 51);
    const double ground = (p.y - moorholmHeight(p.x, p.z, coast)) * 0.8 + 0.9 * solidNoise(p * (1 / 11.0), 53);
    const double land = smoothIntersection(smoothIntersection(wall, ground, 5), seaBed - p.y, 3);
    return smoothIntersection(land, moorholmTunnel(p), 3);
}

double archField(const Vec3& p) {
    // Legs below, half a ring above: the ring's plane is x-y, stretched downwards.
    const double above = std::max(p.y - 14, 0.0);
    const double along = std::sqrt(p.x * p.x + above * above) - 21;
    const double thick = 8.5 + 2.2 * smoothStep(20, 44, p.y) + (p.x > 0 ? 1.5 : -0.5) * smoothStep(24, 8, p.y);
    const double across = std::sqrt(along * along + p.z * p.z * 0.62) - thick;
    const double flatTop = (p.y - 43.5) + 1.2 * solidNoise(p * (1 / 9.0), 83);
    const double rock = smoothIntersection(across + 2.6 * wallBumps(p, 11, 81) + 0.7 * seaNotch(p.y), flatTop, 5);
    return smoothIntersection(rock, seaBed - p.y, 3);
}

double stackField(const Vec3& p) {
    const double waist = 3 * smoothStep(30, 14, p.y);
    const double across = std::sqrt(p.x * p.x * 0.8 + p.z * p.z * 1.1) - 15 + waist;
    const double top = (p.y - 37 - 0.12 * p.x) + 1.5 * solidNoise(p * (1 / 10.0), 93);
    const double rock = smoothIntersection(across + 2.6 * wallBumps(p, 12, 91) + 0.6 * seaNotch(p.y), top, 4);
    return smoothIntersection(rock, seaBed - p.y, 3);
}

} // namespace

LandShape moorholm() {
    return {"moorholm",
            moorholmField,
            {{-172, -22, -172}, {172, 110, 172}, 4},
            [](const Vec3& p) {
                // Coarse where only the sea can see it.
                return mix(11, 5.9, smoothStep(-11, 3, p.y));
            },
            {}};
}

LandShape archRock() {
    return {"arch",
            archField,
            {{-44, -22, -26}, {44, 60, 26}, 2.5},
            [](const Vec3& p) { return mix(7, 4.7, smoothStep(-11, 3, p.y)); },
            {}};
}

LandShape seaStack() {
    return {"stack",
            stackField,
            {{-30, -22, -30}, {30, 56, 30}, 2.5},
            [](const Vec3& p) { return mix(7, 5, smoothStep(-11, 3, p.y)); },
            {}};
}
