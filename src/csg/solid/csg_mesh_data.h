#pragma once

#include "csg/solid/csg_tex_coord.h"
#include "csg/solid/csg_vector.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

/// What a .csg file says, before equal positions are merged and unfit faces dropped. Every index is below the number of
/// corners of its part.
struct csgMeshData {
    struct Corner {
        csgVector position;
        csgTexCoord tex;
    };
    using Triangle = std::array<std::size_t, 3>;
    struct Part {
        std::vector<Corner> corners;
        std::vector<Triangle> triangles;
        std::string texture;
    };
    std::vector<Part> parts;
};
