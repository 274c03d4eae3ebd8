#include "land_shapes.h"

#include "exact_math.h"
#include "land_tools.h"
#include "noise.h"

#include <algorithm>
#include <cmath>

namespace {

double ringHeight(const Vec3& p, double angle, double across) {
    // across runs from -1 at the lake to 1 at the open sea; the ridge lies nearer to the lake.
    const double ridge = 20 + 7 * sine(angle * 2 + 0.7) + 5 * sine(angle * 5 + 2);
    const double rim = exponential(-(across + 0.35) * (across + 0.35) / 0.20);
    const double height = 17 + ridge * rim + 9 * solidFractal(p * (1 / 38.0), 3, 3011);
    return mix(height, terraced(height, 12), 0.45);
}

/// Three horns of rock. Slender, because a rocket flies only so high: what stands on the ring must leave room beside
/// it.
double hornHeight(const Vec3& p) {
    const double x = p.x + 5 * solidNoise(p * (1 / 15.0), 3081);
    const double z = p.z + 5 * solidNoise(p * (1 / 15.0), 3091);
    const double height = hill(x, z, -66, 84, 12, 54) + hill(x, z, -60, -88, 10.5, 36) + hill(x, z, 90, 60, 11, 46);
    return mix(height, terraced(height, 11), 0.6);
}

double ringmereField(const Vec3& p) {
    const Vec3 flat{p.x, 0, p.z};
    const double wander = solidFractal(flat * (1 / 60.0), 3, 3021);
    const double out = roundedSquare(p.x, p.z, 0);
    const double round = std::sqrt(p.x * p.x + p.z * p.z);
    const double outer = out - 148 + 14 * wander;
    const double inner = 60 - round + 9 * solidFractal(flat * (1 / 34.0), 3, 3031);
    // Two gates: the sea comes in through a gap in the west and under an arch in the east.
    const double gap = 11 + 3 * solidNoise(p * (1 / 14.0), 3041) - std::fabs(p.z - 12 - 0.18 * p.x);
    const double gapHere = p.x < 0 ? gap : -50 - p.x;
    const Vec3 inGate{p.x, std::max(p.y, 7.0), p.z};
    const double bore =
        13 + 2 * solidNoise(flat * (1 / 11.0), 3051) - segmentDistance(inGate, {40, 7, -20}, {190, 7, -46});
    const double coast = std::max(std::max(outer, inner), -20.0);
    const double wall = coast + seaNotch(p.y) + 3 * wallBumps(p, 16, 3061);
    const double across = clamp((inner - outer) / std::max(-inner - outer, 20.0), -1, 1);
    const double shoreward = smoothStep(0, 26, -std::max(outer, inner));
    const double horns = hornHeight(flat);
    const double height = mix(13, ringHeight(flat, arcTangent(p.z, p.x), -across), shoreward) +
                          hill(p.x, p.z, 116, -34, 34, 24) + shoreward * horns;
    const double ground = (p.y - height) * 0.75 + 0.9 * solidNoise(p * (1 / 11.0), 3071);
    double land = smoothIntersection(wall, ground, 5);
    land = smoothIntersection(land, gapHere + 0.8 * seaNotch(p.y), 4);
    land = smoothIntersection(land, bore, 3);
    return smoothIntersection(land, seaBed - p.y, 3);
}

LandTheme ashAndMoss() {
    LandTheme theme;
    theme.ground = "moss";
    theme.wall = "slate";
    theme.shore = "ash";
    theme.heights = "ash";
    theme.shoreBelow = 17;
    theme.heightsAbove = 50;
    theme.bareWalls = 1;
    return theme;
}

} // namespace

LandShape basaltArch() {
    LandShape shape = archRock();
    shape.name = "basaltarch";
    shape.theme = ashAndMoss();
    return shape;
}

LandShape ringmere() {
    return {"ringmere",
            ringmereField,
            {{-176, -22, -176}, {176, 110, 176}, 4},
            [](const Vec3& p) { return mix(12, 6.3, smoothStep(-11, 3, p.y)); },
            ashAndMoss()};
}
