#pragma once

#include "csg/solid/csg_mesh_data.h"

#include <string>
#include <vector>

/// One way to move, turn or mirror a geometric case; the outcome must not depend on it.
struct Variant {
    std::string name;
    int firstAxis; ///< the axes trade places in a circle, so that this one becomes x
    bool mirrored; ///< in x; faces change their winding to stay outward
    csgVector offset;

    csgVector apply(const csgVector& p) const;
    csgMeshData apply(csgMeshData data) const;
};

const std::vector<Variant>& variants();
