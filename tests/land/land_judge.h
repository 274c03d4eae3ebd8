#pragma once

// Independent opinion on land that has been carved: what is left is compared with the untouched land and the tools that
// were taken out of it, never with the carving's own working. Columns are lines along an axis: what the result holds of
// one must be what the land holds of it, less what the tools hold.

#include "csg/csg_mesh.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

class LandJudge {
public:
    /// Keeps references only; the mesh stays as it is while judged.
    explicit LandJudge(const csgMesh& untouchedLand) : untouched(untouchedLand) {}

    /// `tool` as it lies when it is taken out.
    void addTool(std::unique_ptr<csgMesh> tool);

    /// How deep (world units) faces of the result reach into a tool, at seven points of each face. Tools are convex.
    double deepestFace(const csgMesh& result) const;

    struct Columns {
        std::size_t tried = 0;
        std::size_t touched = 0; ///< of those, columns that a tool took something from
        std::size_t wrong = 0;   ///< of those, columns off by more than a thousandth
        double worst = 0.0;      ///< largest difference, world units
    };
    /// Random columns along all three axes, half of them through the tools.
    Columns compareColumns(const csgMesh& result, std::size_t count, std::uint32_t seed) const;

    /// Volume that the tools took from the land, by `side` x `side` columns scattered over a grid.
    double removedVolume(std::size_t side, std::uint32_t seed) const;

private:
    double expectedLength(int axis, double u, double v, double& before) const;

    const csgMesh& untouched;
    std::vector<std::unique_ptr<csgMesh>> tools;
};
