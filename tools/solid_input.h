#pragma once

#include "csg/solid/csg_mesh.h"
#include "csg/solid/csg_vector.h"

#include <stdexcept>
#include <string>
#include <vector>

/// What is wrong with a file or an argument, in one line.
struct ToolError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// What a .csg file holds.
struct Solid {
    csgMesh mesh;
    std::vector<std::string> textureNames; ///< one for each part
    /// Faces that the file describes and a mesh does not take: corners that coincide, or hardly any area.
    std::size_t droppedFaces = 0;
};

/// Loads a solid the way the game does. Throws a ToolError.
void loadSolid(Solid& solid, const std::string& fileName);

/// Reads centres, three numbers each, from a text file. Throws a ToolError.
std::vector<csgVector> readCentres(const std::string& fileName);
