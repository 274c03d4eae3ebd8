#include "model.h"

#include "exact_math.h"

#include <map>
#include <tuple>

namespace {

long grid(double x) {
    return static_cast<long>(std::floor(x * 1e4 + 0.5));
}

} // namespace

void smoothNormals(Model& model, double creaseDegrees) {
    const double leastCosine = cosine(creaseDegrees * pi / 180);
    std::map<std::tuple<long, long, long>, std::vector<Vec3>> around;
    const auto place = [&](const ModelCorner& corner) {
        const Vec3& p = model.points[static_cast<std::size_t>(corner.point)].position;
        return std::tuple(grid(p.x), grid(p.y), grid(p.z));
    };
    const auto areaVector = [&](const ModelFace& face) {
        const auto position = [&](std::size_t k) {
            return model.points[static_cast<std::size_t>(face.corners[k].point)].position;
        };
        return cross(position(1) - position(0), position(2) - position(0));
    };
    for (const ModelFace& face : model.faces) {
        for (const ModelCorner& corner : face.corners)
            around[place(corner)].push_back(areaVector(face));
    }
    for (ModelFace& face : model.faces) {
        const Vec3 own = normalized(areaVector(face));
        for (ModelCorner& corner : face.corners) {
            Vec3 sum;
            for (const Vec3& area : around[place(corner)]) {
                if (dot(normalized(area), own) > leastCosine)
                    sum = sum + area;
            }
            corner.normal = normalized(sum);
        }
    }
}
