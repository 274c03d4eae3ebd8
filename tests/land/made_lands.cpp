#include "land/made_lands.h"

#include "support/solids.h"

#include <map>
#include <stdexcept>

namespace {

using Lands = std::vector<MadeLand>;

csgMeshData block(double x, double y, double z) {
    return boxData({-x / 2, -y / 2, -z / 2}, {x / 2, y / 2, z / 2});
}

csgMeshData movedBy(csgMeshData data, const csgVector& by) {
    for (csgMeshData::Part& part : data.parts) {
        for (csgMeshData::Corner& corner : part.corners)
            corner.position += by;
    }
    return data;
}

using Triangles = std::vector<csgMeshData::Triangle>;

/// A shape drawn round in the xz plane, seen from above counter-clockwise, from `bottom` up to `top`, and the triangles
/// that its lid is made of.
csgMeshData prism(const std::vector<csgVector>& outline, const Triangles& lid, double bottom, double top) {
    csgMeshData data;
    csgMeshData::Part& part = data.parts.emplace_back();
    part.texture = "stone";
    const std::size_t n = outline.size();
    for (const double y : {bottom, top}) {
        for (const csgVector& p : outline)
            part.corners.push_back({{p.x, y, p.z}, {0.1 * p.x, 0.1 * p.z}});
    }
    for (std::size_t i = 0; i < n; ++i) {
        const std::size_t j = (i + 1) % n;
        part.triangles.insert(part.triangles.end(), {{i, j, n + j}, {i, n + j, n + i}});
    }
    for (const auto& [a, b, c] : lid)
        part.triangles.insert(part.triangles.end(), {{n + a, n + b, n + c}, {a, c, b}});
    return data;
}

/// An arch bridge over z, 120 long: a deck whose underside is an arc of twelve chords. Its sides are fans round the
/// nearer end of the deck.
csgMeshData bridge() {
    std::vector<csgVector> outline{{60, 0, 0}};
    for (int x = 60; x >= -60; x -= 10)
        outline.push_back({1.0 * x, 0, -2.0 - 0.005 * x * x});
    outline.push_back({-60, 0, 0});
    Triangles side{{0, 7, 14}};
    for (std::size_t i = 1; i < 13; ++i)
        side.push_back({i < 7 ? 0U : 14U, i, i + 1});
    csgMeshData data = prism(outline, side, -6.0, 6.0);
    for (csgMeshData::Corner& corner : data.parts[0].corners)
        corner.position = {corner.position.x, corner.position.z, -corner.position.y};
    return data;
}

/// L-shaped in plan, 12 faces and 8 more.
csgMeshData quay() {
    const Triangles lid{{0, 1, 2}, {0, 2, 3}, {0, 3, 4}, {0, 4, 5}};
    return prism({{156, 0, 0}, {0, 0, 0}, {0, 0, 16}, {140, 0, 16}, {140, 0, 90}, {156, 0, 90}}, lid, -12.0, 4.0);
}

Lands plates(std::uint32_t seed) {
    Lands made;
    for (const double thickness : {0.003, 0.01, 0.03, 0.1, 0.3, 1.0}) {
        for (std::uint32_t i = 0; i < 3; ++i)
            made.push_back({block(40.0, thickness, 60.0 + 0.1 * (seed + i)), Aiming::mixed, 20});
    }
    return made;
}

using Maker = Lands (*)(std::uint32_t seed);
const std::map<std::string, Maker> makers{
    {"slab", [](std::uint32_t) { return Lands{{block(300, 20, 300)}}; }},
    {"thin_slab", [](std::uint32_t) { return Lands{{block(120, 3, 120)}}; }},
    {"plates", plates},
    {"corner",
     [](std::uint32_t) {
         return Lands(10, {block(100, 100, 100), Aiming::atCorner, 6});
     }},
    {"same_place",
     [](std::uint32_t seed) {
         return Lands{{islandData(16, 100.0, seed), Aiming::samePlace, 100}};
     }},
    {"plank",
     [](std::uint32_t) {
         return Lands{{block(200, 2, 12), Aiming::along, 60}};
     }},
    {"bridge",
     [](std::uint32_t) {
         return Lands{{bridge(), Aiming::along, 60}, {bridge()}};
     }},
    {"quay",
     [](std::uint32_t) {
         return Lands{{quay(), Aiming::along, 60}, {quay()}};
     }},
    {"far",
     [](std::uint32_t) {
         return Lands{{movedBy(block(100, 60, 100), {3000, 40, -1500})}};
     }},
};

} // namespace

std::vector<MadeLand> makeLands(const std::string& name, std::uint32_t seed) {
    const auto found = makers.find(name);
    if (found == makers.end())
        throw std::runtime_error("there is no land '" + name + "'");
    std::vector<MadeLand> made = found->second(seed);
    for (const MadeLand& land : made) {
        csgMesh mesh;
        mesh.build(land.data);
        if (openEdgesOf(mesh) != 0 || volumeOf(mesh) <= 0.0)
            throw std::runtime_error("the land '" + name + "' is open or turned inside out");
    }
    return made;
}
