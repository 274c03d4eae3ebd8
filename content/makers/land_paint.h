#pragma once

#include "csg_writer.h"

#include <functional>
#include <string>

/// The textures of a landscape by role, and where the roles begin. The defaults are a green island.
struct LandTheme {
    std::string crater = "earth"; ///< also banks and the undersides of overhangs
    std::string ground = "grass";
    std::string wall = "rock";
    std::string shore = "sand";
    std::string heights = "heather";
    double shoreBelow = 15;   ///< even ground below this height is shore
    double heightsAbove = 42; ///< even ground above about this height is heights
    double bareWalls = 0.12;  ///< share of walls that are stone: 1 all of them, -1 none
    /// Where walls were built rather than grown; they get the texture masonry. May be empty.
    std::function<bool(const Vec3&)> built = {};
    std::string masonry = "brick";
};

/// Chooses a texture for every triangle of a landscape solid by its slope, height and place: earth under overhangs and
/// on banks (and, being the first part, in craters), then as the theme says. Single odd triangles join their
/// neighbours, so that borders stay calm.
SolidPaint paintLand(const TriangleMesh& mesh, const LandTheme& theme);
