#pragma once

// Independent opinion on land that has been carved: what is left is compared with the untouched land and the tools that
// were taken out of it, never with the carving's own working. Columns are lines along an axis: what the result holds of
// one must be what the land holds of it, less what the tools hold.

#include "csg/solid/csg_mesh.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

/// Tools as they lay when they were taken out.
using Tools = std::vector<std::unique_ptr<csgMesh>>;

/// Volume of what a closed land and a convex solid have in common, from the positions of their corners alone: the
/// integral, over every face of the land, of the convex solid's columns below it, counted up for faces that look up and
/// down for those that look down. Exact but for rounding.
double commonVolume(const csgMesh& land, const csgMesh& convex);

/// How deep (world units) faces of the result reach into a tool, at seven points of each face. Tools are convex.
double deepestFace(const csgMesh& result, const Tools& tools);

struct Columns {
    std::size_t tried = 0;
    std::size_t touched = 0; ///< of those, columns that a tool took something from
    std::size_t wrong = 0;   ///< of those, columns off by more than a ten-thousandth
    double worst = 0.0;      ///< largest difference, world units
};
/// Random columns along all three axes, half of them through the tools.
Columns compareColumns(const csgMesh& untouched, const Tools& tools, const csgMesh& result, std::size_t count);
