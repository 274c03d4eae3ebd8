#include "triangle_mesh.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <set>
#include <utility>

Vec3 triangleCross(const TriangleMesh& mesh, const std::array<int, 3>& t) {
    const Vec3& a = mesh.points[static_cast<std::size_t>(t[0])];
    const Vec3& b = mesh.points[static_cast<std::size_t>(t[1])];
    const Vec3& c = mesh.points[static_cast<std::size_t>(t[2])];
    return cross(b - a, c - a);
}

void quantize(TriangleMesh& mesh, double perUnit) {
    for (Vec3& p : mesh.points) {
        p.x = std::floor(p.x * perUnit + 0.5) / perUnit;
        p.y = std::floor(p.y * perUnit + 0.5) / perUnit;
        p.z = std::floor(p.z * perUnit + 0.5) / perUnit;
    }
}

TriangleMesh withoutCrumbs(const TriangleMesh& mesh, int leastTriangles) {
    // Every point leads to a smaller-numbered one of its piece, the smallest to itself.
    std::vector<int> leader(mesh.points.size());
    std::iota(leader.begin(), leader.end(), 0);
    const auto leaderOf = [&leader](int v) {
        while (leader[static_cast<std::size_t>(v)] != v)
            v = leader[static_cast<std::size_t>(v)] =
                leader[static_cast<std::size_t>(leader[static_cast<std::size_t>(v)])];
        return v;
    };
    for (const auto& t : mesh.triangles) {
        for (const int corner : {t[1], t[2]}) {
            const auto [low, high] = std::minmax({leaderOf(t[0]), leaderOf(corner)});
            leader[static_cast<std::size_t>(high)] = low;
        }
    }
    std::vector<int> size(mesh.points.size());
    for (const auto& t : mesh.triangles)
        ++size[static_cast<std::size_t>(leaderOf(t[0]))];
    TriangleMesh kept{mesh.points, {}};
    for (const auto& t : mesh.triangles) {
        if (size[static_cast<std::size_t>(leaderOf(t[0]))] >= leastTriangles)
            kept.triangles.push_back(t);
    }
    return kept;
}

namespace {

std::string near(const Vec3& p) {
    return " near " + std::to_string(p.x) + ' ' + std::to_string(p.y) + ' ' + std::to_string(p.z);
}

} // namespace

std::string findSolidFault(const TriangleMesh& mesh) {
    constexpr double shortestEdge = 0.05;
    constexpr double smallestArea = 0.01;
    std::set<std::pair<int, int>> edges;
    double volume = 0;
    for (const auto& t : mesh.triangles) {
        for (std::size_t k = 0; k < 3; ++k) {
            const int from = t[k];
            const int to = t[(k + 1) % 3];
            if (!edges.insert({from, to}).second)
                return "an edge is used twice in the same direction";
            const Vec3 along = mesh.points[static_cast<std::size_t>(to)] - mesh.points[static_cast<std::size_t>(from)];
            if (length(along) < shortestEdge)
                return "an edge is too short" + near(mesh.points[static_cast<std::size_t>(from)]);
        }
        if (0.5 * length(triangleCross(mesh, t)) < smallestArea)
            return "a triangle is too small" + near(mesh.points[static_cast<std::size_t>(t[0])]);
        volume += dot(mesh.points[static_cast<std::size_t>(t[0])], triangleCross(mesh, t)) / 6;
    }
    for (const auto& [from, to] : edges) {
        if (edges.count({to, from}) == 0)
            return "an edge is open";
    }
    if (!(volume > 0))
        return "the solid is empty or inside out";
    return {};
}
