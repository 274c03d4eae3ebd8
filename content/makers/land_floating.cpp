#include "land_shapes.h"

#include "exact_math.h"
#include "land_tools.h"
#include "noise.h"

#include <algorithm>
#include <cmath>

namespace {

/// A meadow at about y = 0 with a root hanging below it. Level files place several of these at different heights.
double isleField(const Vec3& p) {
    const Vec3 flat{p.x, 0, p.z};
    const double out = std::sqrt(p.x * p.x + p.z * p.z * 1.15);
    const double edge = out - 56 + 9 * solidFractal(flat * (1 / 36.0), 3, 4011);
    const double height =
        3 * solidFractal(flat * (1 / 30.0), 3, 4021) + hill(p.x, p.z, -20, 14, 17, 15) + hill(p.x, p.z, 24, -18, 12, 8);
    const double top = (p.y - height) * 0.85;
    // The root narrows downwards to a few points.
    const double depth = std::max(-p.y, 0.0);
    const double teeth = 9 * solidFractal(Vec3{p.x, p.y * 0.35, p.z} * (1 / 19.0), 3, 4031);
    const double root = edge + 1.05 * std::max(depth - 5, 0.0) + teeth * smoothStep(3, 12, depth);
    const double hole = 8 + 1.5 * solidNoise(p * (1 / 9.0), 4041) - segmentDistance(p, {70, -9, 30}, {-8, -6, 22});
    const double isle = smoothIntersection(smoothIntersection(root, top, 4), -32 - p.y + 5, 4);
    return smoothIntersection(isle, hole, 3);
}

} // namespace

LandShape floatingIsle() {
    LandTheme theme;
    theme.ground = "heather";
    theme.wall = "rock";
    theme.shore = "sand";
    theme.heights = "moss";
    theme.shoreBelow = -3;
    theme.heightsAbove = 5;
    theme.bareWalls = 0.35;
    return {"isle",
            isleField,
            {{-76, -42, -76}, {76, 32, 76}, 3},
            [](const Vec3& p) { return mix(7.5, 5.6, smoothStep(-20, -4, p.y)); },
            theme};
}
