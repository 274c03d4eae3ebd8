// Makes the solids that detonations cut out of the land: spheres of even triangles around the origin.

#include "csg_writer.h"
#include "exact_math.h"

#include <map>
#include <string>
#include <utility>

namespace {

TriangleMesh icosahedron() {
    const double g = (1 + std::sqrt(5.0)) / 2;
    TriangleMesh mesh;
    mesh.points = {{-1, g, 0},  {1, g, 0},  {-1, -g, 0}, {1, -g, 0}, {0, -1, g},  {0, 1, g},
                   {0, -1, -g}, {0, 1, -g}, {g, 0, -1},  {g, 0, 1},  {-g, 0, -1}, {-g, 0, 1}};
    mesh.triangles = {{0, 11, 5},  {0, 5, 1},  {0, 1, 7},  {0, 7, 10}, {0, 10, 11}, {1, 5, 9}, {5, 11, 4},
                      {11, 10, 2}, {10, 7, 6}, {7, 1, 8},  {3, 9, 4},  {3, 4, 2},   {3, 2, 6}, {3, 6, 8},
                      {3, 8, 9},   {4, 9, 5},  {2, 4, 11}, {6, 2, 10}, {8, 6, 7},   {9, 8, 1}};
    for (Vec3& p : mesh.points)
        p = normalized(p);
    return mesh;
}

/// Every triangle becomes four, with the new points lifted onto the unit sphere.
TriangleMesh subdivided(const TriangleMesh& coarse) {
    TriangleMesh mesh;
    mesh.points = coarse.points;
    std::map<std::pair<int, int>, int> middles;
    const auto middle = [&](int a, int b) {
        const auto [entry, isNew] =
            middles.insert({{std::min(a, b), std::max(a, b)}, static_cast<int>(mesh.points.size())});
        if (isNew) {
            mesh.points.push_back(
                normalized(coarse.points[static_cast<std::size_t>(a)] + coarse.points[static_cast<std::size_t>(b)]));
        }
        return entry->second;
    };
    for (const auto& [a, b, c] : coarse.triangles) {
        const int ab = middle(a, b);
        const int bc = middle(b, c);
        const int ca = middle(c, a);
        mesh.triangles.push_back({a, ab, ca});
        mesh.triangles.push_back({ab, b, bc});
        mesh.triangles.push_back({ca, bc, c});
        mesh.triangles.push_back({ab, bc, ca});
    }
    return mesh;
}

/// Turned by angles that line nothing up with the axes, so that no face of the tool is ever flush with flat land.
void turnAskew(TriangleMesh& mesh) {
    for (Vec3& p : mesh.points) {
        const double a = 0.3719;
        p = {p.x, p.y * cosine(a) - p.z * sine(a), p.y * sine(a) + p.z * cosine(a)};
        const double b = 0.8137;
        p = {p.x * cosine(b) + p.z * sine(b), p.y, p.z * cosine(b) - p.x * sine(b)};
        const double c = 0.2293;
        p = {p.x * cosine(c) - p.y * sine(c), p.x * sine(c) + p.y * cosine(c), p.z};
    }
}

bool writeSphere(const std::filesystem::path& directory, const std::string& name, double radius, int subdivisions) {
    TriangleMesh mesh = icosahedron();
    for (int i = 0; i < subdivisions; ++i)
        mesh = subdivided(mesh);
    turnAskew(mesh);
    for (Vec3& p : mesh.points)
        p = p * radius;
    quantize(mesh, 1e6);
    SolidPaint paint;
    paint.textures = {"earth"};
    paint.partOfTriangle.assign(mesh.triangles.size(), 0);
    paint.repeat = 20;
    return writeSolid(directory / (name + ".csg"), mesh, paint);
}

} // namespace

/// Argument: the directory to write into.
int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    const std::filesystem::path directory = argv[1];
    const bool done = writeSphere(directory, "sphere", 10, 2) && writeSphere(directory, "sphereDynamite", 15, 2) &&
                      writeSphere(directory, "shotgunsphere", 3.5, 1);
    return done ? 0 : 1;
}
