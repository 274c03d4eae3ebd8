#pragma once

#include "triangle_mesh.h"

#include <filesystem>
#include <string>
#include <vector>

/// What a solid is painted with.
struct SolidPaint {
    std::vector<std::string> textures; ///< one part each; craters show the first
    std::vector<int> partOfTriangle;   ///< index into textures, one per triangle
    double repeat = 22;                ///< world units covered by one texture repeat
};

/// Writes a solid as text: the part count, and for each part its corner records "x y z u v", its faces as three record
/// numbers, and its texture name. Every face is projected along the axis it faces most, so no wall is smeared. Numbers
/// are written in the shortest form that reads back exactly. Returns false with a line on stderr when the mesh is not a
/// proper solid or the file cannot be written.
bool writeSolid(const std::filesystem::path& file, const TriangleMesh& mesh, const SolidPaint& paint);
