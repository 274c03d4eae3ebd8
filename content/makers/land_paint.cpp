#include "land_paint.h"

#include "noise.h"

#include <array>
#include <map>
#include <utility>

namespace {

enum Part { crater, ground, wall, shore, heights, masonry, partCount };

/// A part for ground that leans by the normal, around a place. Walls are stone where a slow noise says so and earth
/// elsewhere, so that both come in large patches.
Part choose(const LandTheme& theme, const Vec3& normal, const Vec3& middle) {
    const double patch = solidFractal(middle * (1 / 46.0), 2, 7);
    const double wobble = solidFractal(middle * (1 / 20.0), 3, 17);
    if (theme.built && theme.built(middle))
        return normal.y < 0.62 ? masonry : heights;
    if (normal.y < -0.25)
        return theme.bareWalls < 0.5 ? crater : wall;
    if (normal.y + 0.1 * wobble < 0.58)
        return patch + 0.012 * (middle.y - 12) > -theme.bareWalls ? wall : crater;
    if (normal.y + 0.1 * wobble < 0.68 && patch < 0.05)
        return crater;
    if (middle.y + 5 * wobble < theme.shoreBelow)
        return shore;
    return middle.y + 22 * patch > theme.heightsAbove ? heights : ground;
}

using Neighbours = std::vector<std::array<int, 3>>;

Neighbours findNeighbours(const TriangleMesh& mesh) {
    std::map<std::pair<int, int>, int> owner;
    for (std::size_t t = 0; t < mesh.triangles.size(); ++t) {
        const auto& c = mesh.triangles[t];
        for (std::size_t k = 0; k < 3; ++k)
            owner[{c[k], c[(k + 1) % 3]}] = static_cast<int>(t);
    }
    Neighbours neighbours(mesh.triangles.size());
    for (std::size_t t = 0; t < mesh.triangles.size(); ++t) {
        const auto& c = mesh.triangles[t];
        for (std::size_t k = 0; k < 3; ++k)
            neighbours[t][k] = owner.at({c[(k + 1) % 3], c[k]});
    }
    return neighbours;
}

/// A triangle that two of its neighbours outvote takes their part. In place and in order: every change shortens the
/// borders, whereas voting all at once makes chequered patches swap for ever.
void calmBorders(std::vector<int>& parts, const Neighbours& neighbours) {
    for (std::size_t t = 0; t < parts.size(); ++t) {
        std::array<int, partCount> votes{};
        for (const int n : neighbours[t])
            ++votes[static_cast<std::size_t>(parts[static_cast<std::size_t>(n)])];
        for (std::size_t part = 0; part < votes.size(); ++part) {
            if (votes[part] >= 2)
                parts[t] = static_cast<int>(part);
        }
    }
}

/// Each normal becomes the mean of its own and its neighbours', so that single facets do not speckle the land.
void softenNormals(std::vector<Vec3>& normals, const Neighbours& neighbours) {
    const std::vector<Vec3> before = normals;
    for (std::size_t t = 0; t < normals.size(); ++t) {
        Vec3 sum = before[t];
        for (const int n : neighbours[t])
            sum = sum + before[static_cast<std::size_t>(n)];
        normals[t] = normalized(sum);
    }
}

} // namespace

SolidPaint paintLand(const TriangleMesh& mesh, const LandTheme& theme) {
    SolidPaint paint;
    paint.textures = {theme.crater, theme.ground, theme.wall, theme.shore, theme.heights};
    if (theme.built)
        paint.textures.push_back(theme.masonry);
    const Neighbours neighbours = findNeighbours(mesh);
    std::vector<Vec3> normals;
    for (const auto& t : mesh.triangles)
        normals.push_back(normalized(triangleCross(mesh, t)));
    for (int round = 0; round < 2; ++round)
        softenNormals(normals, neighbours);
    for (std::size_t t = 0; t < mesh.triangles.size(); ++t) {
        Vec3 middle;
        for (const int v : mesh.triangles[t])
            middle = middle + mesh.points[static_cast<std::size_t>(v)] * (1.0 / 3);
        paint.partOfTriangle.push_back(choose(theme, normals[t], middle));
    }
    for (int round = 0; round < 6; ++round)
        calmBorders(paint.partOfTriangle, neighbours);
    return paint;
}
