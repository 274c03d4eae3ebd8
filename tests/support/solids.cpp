#include "support/solids.h"

#include "support/hash.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <random>

namespace {

using Part = csgMeshData::Part;

std::size_t addCorner(Part& part, const csgVector& p) {
    // Texture coordinates that are linear in the position: a cut must keep them so.
    part.corners.push_back({p, {0.1 * p.x + 0.02 * p.y, 0.1 * p.z - 0.03 * p.y}});
    return part.corners.size() - 1;
}

void addQuad(Part& part, std::size_t a, std::size_t b, std::size_t c, std::size_t d) {
    part.triangles.push_back({a, b, c});
    part.triangles.push_back({a, c, d});
}

csgMeshData onePart(Part part) {
    part.texture = "stone";
    csgMeshData data;
    data.parts.push_back(std::move(part));
    return data;
}

} // namespace

csgMeshData boxData(const csgVector& low, const csgVector& high) {
    Part part;
    std::array<std::size_t, 8> c{};
    for (std::size_t i = 0; i < 8; ++i)
        c[i] = addCorner(part,
                         {(i & 1) != 0 ? high.x : low.x, (i & 2) != 0 ? high.y : low.y, (i & 4) != 0 ? high.z : low.z});
    addQuad(part, c[0], c[2], c[3], c[1]);
    addQuad(part, c[4], c[5], c[7], c[6]);
    addQuad(part, c[0], c[1], c[5], c[4]);
    addQuad(part, c[2], c[6], c[7], c[3]);
    addQuad(part, c[0], c[4], c[6], c[2]);
    addQuad(part, c[1], c[3], c[7], c[5]);
    return onePart(std::move(part));
}

csgMeshData tetrahedronData(double size) {
    Part part;
    const std::size_t o = addCorner(part, {0.0, 0.0, 0.0});
    const std::size_t x = addCorner(part, {size, 0.0, 0.0});
    const std::size_t y = addCorner(part, {0.0, size, 0.0});
    const std::size_t z = addCorner(part, {0.0, 0.0, size});
    part.triangles = {{o, y, x}, {o, x, z}, {o, z, y}, {x, y, z}};
    return onePart(std::move(part));
}

csgMeshData sphereData(int subdivisions, double radius) {
    const double t = (1.0 + std::sqrt(5.0)) / 2.0;
    std::vector<csgVector> points{{-1, t, 0},  {1, t, 0},  {-1, -t, 0}, {1, -t, 0}, {0, -1, t},  {0, 1, t},
                                  {0, -1, -t}, {0, 1, -t}, {t, 0, -1},  {t, 0, 1},  {-t, 0, -1}, {-t, 0, 1}};
    std::vector<csgMeshData::Triangle> faces{{0, 11, 5}, {0, 5, 1},  {0, 1, 7},   {0, 7, 10}, {0, 10, 11},
                                             {1, 5, 9},  {5, 11, 4}, {11, 10, 2}, {10, 7, 6}, {7, 1, 8},
                                             {3, 9, 4},  {3, 4, 2},  {3, 2, 6},   {3, 6, 8},  {3, 8, 9},
                                             {4, 9, 5},  {2, 4, 11}, {6, 2, 10},  {8, 6, 7},  {9, 8, 1}};
    for (csgVector& p : points)
        p.normalize();
    for (int level = 0; level < subdivisions; ++level) {
        std::map<std::pair<std::size_t, std::size_t>, std::size_t> middles;
        const auto middle = [&](std::size_t a, std::size_t b) {
            const auto [entry, isNew] = middles.try_emplace(std::minmax(a, b), points.size());
            if (isNew) {
                csgVector p = points[a] + points[b];
                p.normalize();
                points.push_back(p);
            }
            return entry->second;
        };
        std::vector<csgMeshData::Triangle> finer;
        for (const auto& [a, b, c] : faces) {
            const std::size_t ab = middle(a, b);
            const std::size_t bc = middle(b, c);
            const std::size_t ca = middle(c, a);
            finer.insert(finer.end(), {{a, ab, ca}, {b, bc, ab}, {c, ca, bc}, {ab, bc, ca}});
        }
        faces = std::move(finer);
    }
    Part part;
    for (const csgVector& p : points)
        addCorner(part, p * radius);
    part.triangles = std::move(faces);
    return onePart(std::move(part));
}

csgMeshData islandData(int cells, double width, std::uint32_t seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> jitter(-0.2, 0.2);
    const double step = width / cells;
    const auto side = static_cast<std::size_t>(cells + 1);
    Part part;
    const auto addLayer = [&](bool top) {
        for (std::size_t row = 0; row < side; ++row) {
            for (std::size_t column = 0; column < side; ++column) {
                const bool rim = row == 0 || column == 0 || row + 1 == side || column + 1 == side;
                const double x = -width / 2 + step * (static_cast<double>(column) + (rim ? 0.0 : jitter(random)));
                const double z = -width / 2 + step * (static_cast<double>(row) + (rim ? 0.0 : jitter(random)));
                const double hills = 12.0 + 6.0 * std::sin(x * 0.06) * std::cos(z * 0.05) +
                                     3.0 * std::sin(x * 0.17 + z * 0.11) + jitter(random);
                addCorner(part, {x, top ? hills : -25.0, z});
            }
        }
    };
    addLayer(true);
    addLayer(false);
    const auto at = [&](bool top, std::size_t row, std::size_t column) {
        return (top ? 0 : side * side) + row * side + column;
    };
    for (std::size_t i = 0; i + 1 < side; ++i) {
        for (std::size_t j = 0; j + 1 < side; ++j) {
            addQuad(part, at(true, i, j), at(true, i + 1, j), at(true, i + 1, j + 1), at(true, i, j + 1));
            addQuad(part, at(false, i, j), at(false, i, j + 1), at(false, i + 1, j + 1), at(false, i + 1, j));
        }
        const std::size_t e = side - 1;
        addQuad(part, at(true, 0, i), at(true, 0, i + 1), at(false, 0, i + 1), at(false, 0, i));
        addQuad(part, at(true, e, i + 1), at(true, e, i), at(false, e, i), at(false, e, i + 1));
        addQuad(part, at(true, i + 1, 0), at(true, i, 0), at(false, i, 0), at(false, i + 1, 0));
        addQuad(part, at(true, i, e), at(true, i + 1, e), at(false, i + 1, e), at(false, i, e));
    }
    return onePart(std::move(part));
}

std::uint64_t hashOf(const csgMesh& mesh) {
    Hash<HashWords> hash;
    for (const auto& vertex : mesh.getVertices()) {
        hash.add(vertex->position);
        hash.add(vertex->normal);
        hash.add(vertex->status);
        hash.add(vertex->adjacent.size());
        hash.add(vertex->faces.size());
    }
    for (const csgFaceList& part : mesh.getParts()) {
        hash.add(part.size());
        for (const auto& face : part) {
            for (std::size_t i = 0; i < 3; ++i) {
                hash.add(face->cornerPosition(i));
                hash.add(face->tex[i].u);
                hash.add(face->tex[i].v);
            }
            hash.add(face->normal);
            hash.add(face->plane.d);
            hash.add(face->status);
        }
    }
    return hash.get();
}

csgVector turned(const csgVector& p, int axis) {
    if (axis == 0)
        return p;
    return axis == 1 ? csgVector{p.y, p.z, p.x} : csgVector{p.z, p.x, p.y};
}

bool isBeside(const csgBounds& box, int axis, double u, double v) {
    const csgVector low = turned(box.min, axis);
    const csgVector high = turned(box.max, axis);
    return u < low.y || u > high.y || v < low.z || v > high.z;
}

std::vector<std::pair<double, double>> columnAlong(const csgMesh& mesh, int axis, double u, double v) {
    std::vector<double> crossings;
    const auto visit = [&](const csgFace& face) {
        const csgVector a = turned(face.cornerPosition(0), axis);
        const csgVector b = turned(face.cornerPosition(1), axis);
        const csgVector c = turned(face.cornerPosition(2), axis);
        const auto side = [&](const csgVector& p, const csgVector& q) {
            return (q.y - p.y) * (v - p.z) - (q.z - p.z) * (u - p.y);
        };
        const double wa = side(b, c);
        const double wb = side(c, a);
        const double wc = side(a, b);
        if ((wa > 0 && wb > 0 && wc > 0) || (wa < 0 && wb < 0 && wc < 0))
            crossings.push_back((wa * a.x + wb * b.x + wc * c.x) / (wa + wb + wc));
    };
    for (const csgFaceList& part : mesh.getParts()) {
        part.forEachWhere([&](const csgBounds& box) { return !isBeside(box, axis, u, v); },
                          [&](std::size_t i) {
                              visit(*part[i]);
                              return true;
                          });
    }
    std::sort(crossings.begin(), crossings.end());
    std::vector<std::pair<double, double>> stretches;
    for (std::size_t i = 0; i + 1 < crossings.size(); i += 2)
        stretches.emplace_back(crossings[i], crossings[i + 1]);
    return stretches;
}

std::vector<std::pair<double, double>> columnOf(const csgMesh& mesh, double x, double z) {
    return columnAlong(mesh, 1, z, x);
}

double columnLength(const csgMesh& mesh, double x, double z) {
    return lengthWithout(columnOf(mesh, x, z), {});
}

double lengthWithout(const std::vector<std::pair<double, double>>& land, std::vector<std::pair<double, double>> holes) {
    std::sort(holes.begin(), holes.end());
    double length = 0.0;
    for (const auto& [bottom, top] : land) {
        double from = bottom;
        for (const auto& [low, high] : holes) {
            if (low > from)
                length += std::max(0.0, std::min(low, top) - from);
            from = std::max(from, high);
        }
        length += std::max(0.0, top - from);
    }
    return length;
}
