#include "land/made_lands.h"

#include "support/solids.h"

#include <cmath>
#include <functional>
#include <map>
#include <numbers>
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

/// A shape drawn round in the xz plane, seen from above counter-clockwise, from `bottom` up to `top`. Lid and floor are
/// fans round the first corner.
csgMeshData prism(const std::vector<csgVector>& outline, double bottom, double top) {
    csgMeshData::Part part;
    part.texture = "stone";
    const std::size_t n = outline.size();
    for (const double y : {bottom, top}) {
        for (const csgVector& p : outline)
            part.corners.push_back({{p.x, y, p.z}, {0.1 * p.x, 0.1 * p.z}});
    }
    for (std::size_t i = 0; i < n; ++i) {
        const std::size_t j = (i + 1) % n;
        part.triangles.push_back({i, j, n + j});
        part.triangles.push_back({i, n + j, n + i});
        if (i > 0 && j > 0) {
            part.triangles.push_back({n, n + i, n + j});
            part.triangles.push_back({0, j, i});
        }
    }
    csgMeshData data;
    data.parts.push_back(part);
    return data;
}

/// A flat cone: `sides` faces round one apex, above as many below.
csgMeshData fan(std::size_t sides, double radius) {
    csgMeshData::Part part;
    part.texture = "stone";
    part.corners.push_back({{0, 3, 0}, {}});
    part.corners.push_back({{0, -20, 0}, {}});
    for (std::size_t i = 0; i < sides; ++i) {
        const double angle = 2.0 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(sides);
        part.corners.push_back({{radius * std::cos(angle), 0.0, -radius * std::sin(angle)}, {}});
    }
    for (std::size_t i = 0; i < sides; ++i) {
        const std::size_t j = (i + 1) % sides;
        part.triangles.push_back({0, i + 2, j + 2});
        part.triangles.push_back({1, j + 2, i + 2});
    }
    csgMeshData data;
    data.parts.push_back(part);
    return data;
}

/// An arch bridge over z, 120 long: a deck whose underside is an arc of twelve chords.
csgMeshData bridge() {
    csgMeshData::Part part;
    part.texture = "stone";
    constexpr std::size_t chords = 12;
    constexpr double half = 60.0;
    // Per end of a chord: underside and deck, left and right.
    for (std::size_t i = 0; i <= chords; ++i) {
        const double x = -half + 2.0 * half * static_cast<double>(i) / chords;
        const double under = -2.0 - 18.0 * (x / half) * (x / half);
        for (const double z : {-6.0, 6.0})
            part.corners.push_back({{x, under, z}, {0.1 * x, 0.1 * z}});
    }
    const std::size_t deck = part.corners.size();
    for (const double x : {-half, half}) {
        for (const double z : {-6.0, 6.0})
            part.corners.push_back({{x, 0.0, z}, {0.1 * x, 0.1 * z}});
    }
    const auto quad = [&](std::size_t a, std::size_t b, std::size_t c, std::size_t d) {
        part.triangles.push_back({a, b, c});
        part.triangles.push_back({a, c, d});
    };
    for (std::size_t i = 0; i < chords; ++i) {
        const std::size_t a = 2 * i;
        quad(a, a + 2, a + 3, a + 1);
        // The sides are fans round the deck's nearer corner.
        const std::size_t corner = i < chords / 2 ? deck : deck + 2;
        part.triangles.push_back({corner, a + 2, a});
        part.triangles.push_back({corner + 1, a + 1, a + 3});
    }
    const std::size_t end = 2 * chords;
    const std::size_t crown = chords;
    part.triangles.push_back({deck, deck + 2, crown});
    part.triangles.push_back({deck + 1, crown + 1, deck + 3});
    quad(deck, deck + 1, deck + 3, deck + 2);
    quad(0, 1, deck + 1, deck);
    quad(end, deck + 2, deck + 3, end + 1);
    csgMeshData data;
    data.parts.push_back(part);
    return data;
}

Lands plates(std::uint32_t seed) {
    Lands made;
    for (const double thickness : {0.003, 0.01, 0.03, 0.1, 0.3, 1.0}) {
        for (std::uint32_t i = 0; i < 3; ++i)
            made.push_back({block(40.0, thickness, 60.0 + 0.1 * (seed + i)), Aiming::mixed, 1.0, 20});
    }
    return made;
}

/// L-shaped in plan, 12 faces and 8 more.
csgMeshData quay() {
    return prism({{156, 0, 0}, {0, 0, 0}, {0, 0, 16}, {140, 0, 16}, {140, 0, 90}, {156, 0, 90}}, -12.0, 4.0);
}

using Maker = std::function<Lands(std::uint32_t)>;
const std::map<std::string, Maker> makers{
    {"slab", [](std::uint32_t) { return Lands{{block(300, 20, 300)}}; }},
    {"small_slab",
     [](std::uint32_t) {
         return Lands{{block(30, 2, 30), Aiming::mixed, 0.1}};
     }},
    {"thin_slab", [](std::uint32_t) { return Lands{{block(120, 3, 120)}}; }},
    {"plates", plates},
    {"corner",
     [](std::uint32_t) {
         return Lands(10, {block(100, 100, 100), Aiming::atCorner, 1.0, 6});
     }},
    {"same_place",
     [](std::uint32_t seed) {
         return Lands{{islandData(16, 100.0, seed), Aiming::samePlace, 1.0, 100}};
     }},
    {"nearly_same_place",
     [](std::uint32_t seed) {
         Lands made;
         for (std::uint32_t i = 0; i < 20; ++i)
             made.push_back({islandData(16, 100.0, seed * 100 + i), Aiming::nearlySamePlace, 1.0, 15});
         return made;
     }},
    {"fan",
     [](std::uint32_t) {
         return Lands{{fan(256, 60.0), Aiming::samePlace, 1.0, 1}, {fan(128, 60.0)}};
     }},
    {"plank",
     [](std::uint32_t) {
         return Lands{{block(200, 2, 12), Aiming::along, 1.0, 60}};
     }},
    {"mast",
     [](std::uint32_t) {
         return Lands{{block(4, 160, 4), Aiming::along, 1.0, 60}};
     }},
    {"bridge",
     [](std::uint32_t) {
         return Lands{{bridge(), Aiming::along, 1.0, 60}, {bridge()}};
     }},
    {"quay",
     [](std::uint32_t) {
         return Lands{{quay(), Aiming::along, 1.0, 60}, {quay()}};
     }},
    {"far",
     [](std::uint32_t) {
         return Lands{{movedBy(block(100, 60, 100), {3000, 40, -1500})}};
     }},
};

} // namespace

const std::vector<std::string>& namesOfMadeLands() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> all;
        for (const auto& [name, make] : makers)
            all.push_back(name);
        return all;
    }();
    return names;
}

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
