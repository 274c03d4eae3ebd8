#pragma once

// Independent opinion on land that is carved: what is left is compared with the land as it was and the tools that were
// taken out of it, never with the carving's own working.

#include "csg/solid/csg_mesh.h"

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
