#pragma once

#include "model.h"

#include <filesystem>

/// Writes the model in the MilkShape 3D binary format, version 4 without its optional tail: little-endian vertices,
/// triangles, groups, materials, key-framed joints. The game flips t for corners that belong to a joint, so those are
/// written as 1 - v and the others as v. False with a line on stderr when a count does not fit the format or the file
/// fails.
bool writeMs3d(const std::filesystem::path& file, const Model& model);
