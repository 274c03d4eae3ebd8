#include "csg/solid/csg_measure.h"

#include "csg/solid/csg_mesh.h"

#include <algorithm>
#include <limits>
#include <map>
#include <utility>
#include <vector>

namespace {

struct HalfEdge {
    csgVector from;
    csgVector to;
};

double distanceToSegment(const csgVector& p, const HalfEdge& edge) {
    const csgVector along = edge.to - edge.from;
    const double squared = along.dot(along);
    const double t = squared > 0.0 ? std::clamp((p - edge.from).dot(along) / squared, 0.0, 1.0) : 0.0;
    return (p - (edge.from + along * t)).length();
}

/// How many faces use an edge in each direction.
struct Uses {
    int along = 0;
    int against = 0;
};
using Edges = std::map<std::pair<const csgVertex*, const csgVertex*>, Uses>;

Edges edgesOf(const csgMesh& mesh) {
    Edges edges;
    for (const csgFaceList& part : mesh.getParts()) {
        for (const auto& face : part) {
            for (std::size_t i = 0; i < 3; ++i) {
                const csgVertex* a = face->corners[i];
                const csgVertex* b = face->corners[(i + 1) % 3];
                ++(a < b ? edges[{a, b}].along : edges[{b, a}].against);
            }
        }
    }
    return edges;
}

std::size_t countOpen(const Edges& edges) {
    return static_cast<std::size_t>(std::count_if(edges.begin(), edges.end(), [](const auto& edge) {
        return edge.second.along != 1 || edge.second.against != 1;
    }));
}

/// What is left of the half edges when each has been paired with one that runs back between the same vertices.
std::vector<HalfEdge> unpairedHalfEdges(const Edges& edges) {
    std::vector<HalfEdge> unpaired;
    for (const auto& [ends, uses] : edges) {
        for (int i = uses.against; i < uses.along; ++i)
            unpaired.push_back({ends.first->position, ends.second->position});
        for (int i = uses.along; i < uses.against; ++i)
            unpaired.push_back({ends.second->position, ends.first->position});
    }
    return unpaired;
}

/// Distance from a half edge to those that run the other way, the largest along its length.
double gapOf(const HalfEdge& edge, const std::vector<HalfEdge>& all) {
    constexpr int samples = 8;
    const csgVector along = edge.to - edge.from;
    double gap = 0.0;
    for (int i = 0; i <= samples; ++i) {
        const csgVector p = edge.from + along * (static_cast<double>(i) / samples);
        double nearest = std::numeric_limits<double>::max();
        for (const HalfEdge& other : all) {
            if ((other.to - other.from).dot(along) < 0.0)
                nearest = std::min(nearest, distanceToSegment(p, other));
        }
        gap = std::max(gap, nearest);
    }
    return gap;
}

} // namespace

double volumeOf(const csgMesh& mesh) {
    double sum = 0.0;
    for (const csgFaceList& part : mesh.getParts()) {
        for (const auto& face : part)
            sum += face->cornerPosition(0).dot(face->cornerPosition(1).cross(face->cornerPosition(2))) / 6.0;
    }
    return sum;
}

double areaOf(const csgMesh& mesh) {
    double sum = 0.0;
    for (const csgFaceList& part : mesh.getParts()) {
        for (const auto& face : part)
            sum += face->area();
    }
    return sum;
}

std::size_t openEdgesOf(const csgMesh& mesh) {
    return countOpen(edgesOf(mesh));
}

OpenEdges measureOpenEdges(const csgMesh& mesh) {
    const Edges edges = edgesOf(mesh);
    const std::vector<HalfEdge> unpaired = unpairedHalfEdges(edges);
    OpenEdges result;
    result.count = countOpen(edges);
    result.unpaired = unpaired.size();
    for (const HalfEdge& edge : unpaired)
        result.widestGap = std::max(result.widestGap, gapOf(edge, unpaired));
    return result;
}
