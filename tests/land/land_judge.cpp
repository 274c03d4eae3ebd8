#include "land/land_judge.h"

#include "support/solids.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace {

constexpr double wrongBy = 1e-3;

double depthIn(const csgMesh& convex, const csgVector& p) {
    double depth = std::numeric_limits<double>::max();
    for (const csgFaceList& part : convex.getParts()) {
        for (const auto& face : part)
            depth = std::min(depth, -face->signedDistance(p));
    }
    return depth;
}

} // namespace

void LandJudge::addTool(std::unique_ptr<csgMesh> tool) {
    tools.push_back(std::move(tool));
}

double LandJudge::deepestFace(const csgMesh& result) const {
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

double LandJudge::expectedLength(int axis, double u, double v, double& before) const {
    const auto land = columnAlong(untouched, axis, u, v);
    std::vector<std::pair<double, double>> holes;
    for (const auto& tool : tools) {
        if (isBeside(*tool->getBounds(), axis, u, v))
            continue;
        const auto hole = columnAlong(*tool, axis, u, v);
        holes.insert(holes.end(), hole.begin(), hole.end());
    }
    before = lengthWithout(land, {});
    return lengthWithout(land, std::move(holes));
}

LandJudge::Columns LandJudge::compareColumns(const csgMesh& result, std::size_t count, std::uint32_t seed) const {
    std::mt19937 random(seed);
    Columns columns;
    for (std::size_t i = 0; i < count; ++i) {
        const int axis = static_cast<int>(i % 3);
        const bool throughTool = i % 2 == 0 && !tools.empty();
        const csgBounds& box = throughTool ? *tools[random() % tools.size()]->getBounds() : *untouched.getBounds();
        const csgVector low = turned(box.min, axis);
        const csgVector high = turned(box.max, axis);
        const double u = std::uniform_real_distribution<double>(low.y, high.y)(random);
        const double v = std::uniform_real_distribution<double>(low.z, high.z)(random);
        double before = 0.0;
        const double expected = expectedLength(axis, u, v, before);
        const double found = lengthWithout(columnAlong(result, axis, u, v), {});
        const double off = std::fabs(found - expected);
        ++columns.tried;
        columns.touched += expected < before - wrongBy ? 1U : 0U;
        columns.wrong += off > wrongBy ? 1U : 0U;
        columns.worst = std::max(columns.worst, off);
    }
    return columns;
}

double LandJudge::removedVolume(std::size_t side, std::uint32_t seed) const {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> within(0.0, 1.0);
    const csgBounds& box = *untouched.getBounds();
    const double du = (box.max.z - box.min.z) / static_cast<double>(side);
    const double dv = (box.max.x - box.min.x) / static_cast<double>(side);
    double removed = 0.0;
    for (std::size_t i = 0; i < side; ++i) {
        for (std::size_t j = 0; j < side; ++j) {
            const double u = box.min.z + (static_cast<double>(i) + within(random)) * du;
            const double v = box.min.x + (static_cast<double>(j) + within(random)) * dv;
            double before = 0.0;
            const double after = expectedLength(1, u, v, before);
            removed += (before - after) * du * dv;
        }
    }
    return removed;
}
