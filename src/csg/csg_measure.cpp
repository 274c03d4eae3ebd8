#include "csg/csg_measure.h"

#include "csg/csg_mesh.h"

#include <algorithm>
#include <map>
#include <utility>

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
    struct Uses {
        int along = 0;
        int against = 0;
    };
    std::map<std::pair<const csgVertex*, const csgVertex*>, Uses> edges;
    for (const csgFaceList& part : mesh.getParts()) {
        for (const auto& face : part) {
            for (std::size_t i = 0; i < 3; ++i) {
                const csgVertex* a = face->corners[i];
                const csgVertex* b = face->corners[(i + 1) % 3];
                ++(a < b ? edges[{a, b}].along : edges[{b, a}].against);
            }
        }
    }
    return static_cast<std::size_t>(std::count_if(edges.begin(), edges.end(), [](const auto& edge) {
        return edge.second.along != 1 || edge.second.against != 1;
    }));
}
