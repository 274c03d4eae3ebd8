#pragma once

#include "csg/csg_vector.h"

#include <stdexcept>
#include <string>
#include <vector>

class csgObject;

/// What is wrong with a file or an argument, in one line.
struct ToolError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Loads a solid the way the game does, given its whole file name. Throws a ToolError.
void loadSolid(csgObject& solid, const std::string& fileName);

/// Reads centres, three numbers each, from a text file. Throws a ToolError.
std::vector<csgVector> readCentres(const std::string& fileName);
