#include "support/variants.h"

#include "support/solids.h"

#include <utility>

csgVector Variant::apply(const csgVector& p) const {
    csgVector moved = turned(p, firstAxis);
    if (mirrored)
        moved.x = -moved.x;
    return moved + offset;
}

csgMeshData Variant::apply(csgMeshData data) const {
    for (csgMeshData::Part& part : data.parts) {
        for (csgMeshData::Corner& corner : part.corners)
            corner.position = apply(corner.position);
        if (!mirrored)
            continue;
        for (csgMeshData::Triangle& triangle : part.triangles)
            std::swap(triangle[1], triangle[2]);
    }
    return data;
}

const std::vector<Variant>& variants() {
    static const std::vector<Variant> all = [] {
        std::vector<Variant> list;
        for (const bool mirrored : {false, true}) {
            for (const int axis : {0, 1, 2}) {
                const std::string name = "axis " + std::to_string(axis) + (mirrored ? ", mirrored" : "");
                list.push_back({name, axis, mirrored, {0.0, 0.0, 0.0}});
                list.push_back({name + ", moved", axis, mirrored, {-120.25, 33.5, 71.0}});
            }
        }
        return list;
    }();
    return all;
}
