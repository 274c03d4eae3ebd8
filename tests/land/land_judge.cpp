#include "land/land_judge.h"

#include "support/solids.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>

namespace {

constexpr double wrongBy = 1e-4;

double depthIn(const csgMesh& convex, const csgVector& p) {
    double depth = std::numeric_limits<double>::max();
    for (const csgFaceList& part : convex.getParts()) {
        for (const auto& face : part)
            depth = std::min(depth, -face->signedDistance(p));
    }
    return depth;
}

/// What a line should hold, and what it held before.
std::pair<double, double> expectedLength(const csgMesh& untouched, const Tools& tools, int axis, double u, double v) {
    const auto land = columnAlong(untouched, axis, u, v);
    std::vector<std::pair<double, double>> holes;
    for (const auto& tool : tools) {
        if (isBeside(*tool->getBounds(), axis, u, v))
            continue;
        const auto hole = columnAlong(*tool, axis, u, v);
        holes.insert(holes.end(), hole.begin(), hole.end());
    }
    return {lengthWithout(land, std::move(holes)), lengthWithout(land, {})};
}

/// A triangle as it is seen from above: points (x, z), and its height over them as a linear function.
struct Roof {
    std::array<csgVector, 3> corners;
    double area = 0.0; ///< twice, above zero when it looks up
    csgBounds box;

    Roof(const csgFace& face, const csgVector& origin)
        : corners{face.cornerPosition(0) - origin, face.cornerPosition(1) - origin, face.cornerPosition(2) - origin},
          area(across(corners[0], corners[1], corners[2])),
          box(corners[0]) {
        box.merge(corners[1]);
        box.merge(corners[2]);
    }
    /// Above zero for points that run counter-clockwise seen from above.
    static double across(const csgVector& a, const csgVector& b, const csgVector& c) {
        return (b.z - a.z) * (c.x - a.x) - (b.x - a.x) * (c.z - a.z);
    }
    double heightAt(const csgVector& p) const {
        const auto& [a, b, c] = corners;
        return (across(p, b, c) * a.y + across(a, p, c) * b.y + across(a, b, p) * c.y) / area;
    }
};

using Outline = std::vector<csgVector>;

/// What of a convex outline has a value of zero or more.
template <typename Value>
Outline clipped(const Outline& outline, Value value) {
    Outline kept;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const csgVector& here = outline[i];
        const csgVector& next = outline[(i + 1) % outline.size()];
        const double v = value(here);
        const double w = value(next);
        if (v >= 0.0)
            kept.push_back(here);
        if ((v > 0.0 && w < 0.0) || (v < 0.0 && w > 0.0))
            kept.push_back(here + (next - here) * (v / (v - w)));
    }
    return kept;
}

/// Integral of the height of a roof over an outline.
double integral(const Roof& roof, const Outline& outline) {
    double sum = 0.0;
    for (std::size_t i = 2; i < outline.size(); ++i) {
        const csgVector middle = (outline[0] + outline[i - 1] + outline[i]) * (1.0 / 3.0);
        sum += std::fabs(Roof::across(outline[0], outline[i - 1], outline[i])) / 2.0 * roof.heightAt(middle);
    }
    return sum;
}

/// Integral of the lower of the two where both are.
double lowerOf(const Roof& land, const Roof& tool) {
    const auto sideOf = [](const Roof& roof, std::size_t i) {
        const csgVector& a = roof.corners[i];
        const csgVector& b = roof.corners[(i + 1) % 3];
        const double sense = roof.area > 0.0 ? 1.0 : -1.0;
        return [=](const csgVector& p) { return sense * Roof::across(a, b, p); };
    };
    Outline common(tool.corners.begin(), tool.corners.end());
    for (std::size_t i = 0; i < 3; ++i)
        common = clipped(common, sideOf(land, i));
    // Not the two regions apart: where the two roofs are one, rounding may find a place in both.
    const Outline under = clipped(common, [&](const csgVector& p) { return tool.heightAt(p) - land.heightAt(p); });
    return integral(tool, common) + integral(land, under) - integral(tool, under);
}

/// Areas below this are upright faces: they cover nothing.
constexpr double upright = 1e-12;

} // namespace

double commonVolume(const csgMesh& land, const csgMesh& convex) {
    const csgVector origin = convex.getBounds()->centre();
    std::vector<Roof> tools;
    for (const csgFaceList& part : convex.getParts()) {
        for (const auto& face : part)
            tools.emplace_back(*face, origin);
    }
    std::erase_if(tools, [](const Roof& roof) { return std::fabs(roof.area) < upright; });
    csgBounds below = *convex.getBounds();
    below.max.y = std::numeric_limits<double>::max();
    double volume = 0.0;
    for (const csgFaceList& part : land.getParts()) {
        part.forEachMeeting(below, [&](std::size_t i) {
            const Roof roof(*part[i], origin);
            if (std::fabs(roof.area) < upright)
                return;
            for (const Roof& tool : tools) {
                const bool isBeside = tool.box.max.x < roof.box.min.x || tool.box.min.x > roof.box.max.x ||
                                      tool.box.max.z < roof.box.min.z || tool.box.min.z > roof.box.max.z;
                if (!isBeside)
                    volume += ((roof.area > 0.0) == (tool.area > 0.0) ? 1.0 : -1.0) * lowerOf(roof, tool);
            }
        });
    }
    return volume;
}

double deepestFace(const csgMesh& result, const Tools& tools) {
    double deepest = 0.0;
    for (const auto& tool : tools) {
        for (const csgFaceList& part : result.getParts()) {
            part.forEachMeeting(*tool->getBounds(), [&](std::size_t i) {
                const csgFace& face = *part[i];
                const csgVector centre = face.centre();
                deepest = std::max(deepest, depthIn(*tool, centre));
                for (std::size_t c = 0; c < 3; ++c) {
                    const csgVector& corner = face.cornerPosition(c);
                    const csgVector middle = (corner + face.cornerPosition((c + 1) % 3)) * 0.5;
                    deepest = std::max(deepest, depthIn(*tool, (corner + centre) * 0.5));
                    deepest = std::max(deepest, depthIn(*tool, middle * 0.98 + centre * 0.02));
                }
            });
        }
    }
    return deepest;
}

Columns compareColumns(const csgMesh& untouched, const Tools& tools, const csgMesh& result, std::size_t count) {
    std::mt19937 random(1);
    Columns columns;
    for (std::size_t i = 0; i < count; ++i) {
        const int axis = static_cast<int>(i % 3);
        const bool throughTool = i % 2 == 0 && !tools.empty();
        const csgBounds& box = throughTool ? *tools[random() % tools.size()]->getBounds() : *untouched.getBounds();
        const csgVector low = turned(box.min, axis);
        const csgVector high = turned(box.max, axis);
        const double u = std::uniform_real_distribution<double>(low.y, high.y)(random);
        const double v = std::uniform_real_distribution<double>(low.z, high.z)(random);
        const auto [expected, before] = expectedLength(untouched, tools, axis, u, v);
        const double off = std::fabs(lengthWithout(columnAlong(result, axis, u, v), {}) - expected);
        ++columns.tried;
        columns.touched += expected < before - wrongBy ? 1U : 0U;
        columns.wrong += off > wrongBy ? 1U : 0U;
        columns.worst = std::max(columns.worst, off);
    }
    return columns;
}
