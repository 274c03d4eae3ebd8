#include "land_paint.h"

#include "noise.h"

#include <array>
#include <map>
#include <utility>

namespace {

enum Part { earth, grass, rock, sand, heather, partCount };

Part choose(const Vec3& normal, const Vec3& middle) {
    const double wobble = solidFractal(middle * (1 / 24.0), 3, 7);
    const double steep = normal.y + 0.08 * wobble;
    if (normal.y < -0.25)
        return earth;
    if (steep < 0.52)
        return rock;
    if (steep < 0.66)
        return earth;
    if (middle.y + 5 * wobble < 14)
        return sand;
    return middle.y + 22 * wobble > 40 ? heather : grass;
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

/// A triangle that two of its neighbours outvote takes their part.
void calmBorders(std::vector<int>& parts, const Neighbours& neighbours) {
    const std::vector<int> before = parts;
    for (std::size_t t = 0; t < parts.size(); ++t) {
        std::array<int, partCount> votes{};
        for (const int n : neighbours[t])
            ++votes[static_cast<std::size_t>(before[static_cast<std::size_t>(n)])];
        for (std::size_t part = 0; part < votes.size(); ++part) {
            if (votes[part] >= 2)
                parts[t] = static_cast<int>(part);
        }
    }
}

} // namespace

SolidPaint paintLand(const TriangleMesh& mesh) {
    SolidPaint paint;
    paint.textures = {"earth", "grass", "rock", "sand", "heather"};
    for (const auto& t : mesh.triangles) {
        Vec3 middle;
        for (const int v : t)
            middle = middle + mesh.points[static_cast<std::size_t>(v)] * (1.0 / 3);
        paint.partOfTriangle.push_back(choose(normalized(triangleCross(mesh, t)), middle));
    }
    const Neighbours neighbours = findNeighbours(mesh);
    for (int round = 0; round < 4; ++round)
        calmBorders(paint.partOfTriangle, neighbours);
    return paint;
}
