#pragma once

// Lands as nobody shipped them yet: walls of two triangles, plates, planks, fans, one place hit again and again.

#include "csg/solid/csg_mesh_data.h"

#include <cstdint>
#include <string>
#include <vector>

/// Where craters go.
enum class Aiming { mixed, along, atCorner, samePlace, nearlySamePlace };

struct MadeLand {
    csgMeshData data;
    Aiming aiming = Aiming::mixed;
    double toolScale = 1.0;
    int craters = 0; ///< 0: as many as are asked for
};

const std::vector<std::string>& namesOfMadeLands();
/// One or more bodies, each a trial of its own; throws std::runtime_error for an unknown name.
std::vector<MadeLand> makeLands(const std::string& name, std::uint32_t seed);
