#include "land_shapes.h"

#include "exact_math.h"
#include "land_tools.h"
#include "noise.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double courtyard = 24;
/// Half the side of the square that the middle line of the walls runs along.
constexpr double wallLine = 72;
/// A rocket clears about 25 units more than where it starts from.
constexpr double wallTop = 42;

/// Height of the rock under a place, before anything was built on it.
double rockHeight(double x, double z) {
    const Vec3 p{x, 0, z};
    const double outside = smoothStep(wallLine + 6, wallLine + 34, std::max(std::fabs(x), std::fabs(z)));
    const double wildLand =
        17 + 9 * solidFractal(p * (1 / 30.0), 3, 5011) + hill(x, z, 96, -98, 22, 26) + hill(x, z, -104, 90, 20, 20);
    return mix(courtyard + 0.8 * solidNoise(p * (1 / 16.0), 5021), wildLand, outside);
}

/// How far the top of a wall or tower has crumbled at a place.
double decay(double x, double z) {
    return 11 * smoothStep(-0.05, 0.35, solidFractal({x / 38, 0, z / 38}, 2, 5031));
}

/// How deep siege guns have breached the walls at a place.
double breach(double x, double z) {
    return hill(x, z, -28, -wallLine, 11, 15) + hill(x, z, -wallLine, 26, 13, 16) + hill(x, z, 38, wallLine, 10, 13) +
           hill(x, z, wallLine, -30, 11, 15);
}

/// Distance-like value to a round tower standing on the rock.
double tower(const Vec3& p, double x, double z, double radius, double top) {
    const double dx = p.x - x;
    const double dz = p.z - z;
    const double around = std::sqrt(dx * dx + dz * dz);
    const double flare = 1.8 * smoothStep(top - 11, top - 6, p.y);
    const double body = std::max(around - radius - flare, p.y - top + decay(p.x, p.z) * 0.8);
    const double well = std::max(around - radius + 4.5, top - 6 - p.y);
    return std::max(body, -well);
}

/// Distance-like value to a straight wall between two points in plan, with a walk along its top.
double rampart(const Vec3& p, double ax, double az, double bx, double bz, double top) {
    const double away = segmentDistance({p.x, 0, p.z}, {ax, 0, az}, {bx, 0, bz});
    const double along = std::fabs(p.x - ax) + std::fabs(p.z - az);
    const double notch = 3.5 * smoothStep(-0.2, 0.2, sine(2 * pi * along / 15));
    const double fallen = decay(p.x, p.z) + breach(p.x, p.z);
    // Where much has fallen no merlon is left standing.
    const double crown = away > 4 ? top - mix(notch, 4, smoothStep(2, 7, fallen)) : top - 4;
    return std::max(away - 7, p.y - crown + fallen);
}

double gate(const Vec3& p, double x, double z, double alongX, double alongZ) {
    const Vec3 axis{alongX, 0, alongZ};
    return segmentDistance({p.x, std::max(p.y, courtyard + 6), p.z}, Vec3{x, courtyard + 6, z} - axis,
                           Vec3{x, courtyard + 6, z} + axis) -
           8;
}

/// Everything that was built: walls, corner towers and the keep.
double masonry(const Vec3& p) {
    constexpr double w = wallLine;
    double built = std::min(std::min(rampart(p, -w, -w, w, -w, wallTop), rampart(p, -w, w, w, w, wallTop)),
                            std::min(rampart(p, -w, -w, -w, w, wallTop), rampart(p, w, -w, w, w, wallTop)));
    built = std::min(built, std::min(tower(p, -w, -w, 15, 62), tower(p, w, w, 16, 55)));
    built = std::min(built, std::min(tower(p, w, -w, 14, 49), tower(p, -w, w, 14, 47)));
    const double keep =
        std::max(std::max(std::fabs(p.x + 12), std::fabs(p.z + 8)) - 22, p.y - 50 + decay(p.x, p.z) * 1.2);
    built = std::min(built, keep);
    built = std::max(built, -std::min(gate(p, 0, w, 0, 14), gate(p, w, 8, 14, 0)));
    // A hall leads through the keep.
    built = std::max(built, -gate(p, -12, -8, 34, 0));
    return std::max(built, 10 - p.y);
}

double fortressField(const Vec3& p) {
    const Vec3 flat{p.x, 0, p.z};
    const double coast = roundedSquare(p.x, p.z, 126) + 15 * solidFractal(flat * (1 / 48.0), 3, 5041);
    const double wall = coast * 0.9 + seaNotch(p.y) + 3 * wallBumps(p, 16, 5051);
    const double ground = (p.y - rockHeight(p.x, p.z)) * 0.85;
    const double rock = smoothIntersection(wall, ground, 4);
    return smoothIntersection(smoothUnion(rock, masonry(p), 1.5), seaBed - p.y, 3);
}

double watchtowerField(const Vec3& p) {
    const double across = std::sqrt(p.x * p.x * 0.9 + p.z * p.z * 1.1) - 27;
    const double ground = (p.y - 22) + 2 * solidNoise(p * (1 / 12.0), 5061);
    const double rock = smoothIntersection(across + 3 * wallBumps(p, 13, 5071) + 0.7 * seaNotch(p.y), ground, 4);
    const double around = std::sqrt(p.x * p.x + p.z * p.z);
    const double shaft = std::max(around - 11 - 2 * smoothStep(52, 58, p.y), p.y - 64 + 0.25 * p.x);
    const double well = std::max(around - 7, 58 - p.y);
    const double built = std::max(std::max(shaft, -well), 12 - p.y);
    return smoothIntersection(smoothUnion(rock, built, 1.5), seaBed - p.y, 3);
}

LandTheme winter() {
    LandTheme theme;
    theme.ground = "snow";
    theme.wall = "slate";
    theme.shore = "snow";
    theme.heights = "snow";
    theme.bareWalls = 1;
    return theme;
}

} // namespace

LandShape fortress() {
    LandTheme theme = winter();
    theme.built = [](const Vec3& p) { return masonry(p) < 2 && p.y > courtyard - 3; };
    return {"fortress",
            fortressField,
            {{-160, -22, -160}, {160, 82, 160}, 3},
            [](const Vec3& p) { return mix(12, 5.8, smoothStep(-11, 3, p.y)); },
            theme};
}

LandShape watchtower() {
    LandTheme theme = winter();
    theme.built = [](const Vec3& p) { return p.x * p.x + p.z * p.z < 15 * 15 && p.y > 21; };
    return {"watchtower",
            watchtowerField,
            {{-44, -22, -44}, {44, 76, 44}, 2.5},
            [](const Vec3& p) { return mix(8, 4.8, smoothStep(-11, 3, p.y)); },
            theme};
}
