#include "surface_mesher.h"

#include "exact_math.h"

namespace {

/// Corner numbers of the six tetrahedra of a cube; bit 0 of a corner is x, bit 1 y, bit 2 z. All share the diagonal
/// 0-7, so neighbouring cubes cut their common face alike.
constexpr int tetrahedra[6][4] = {{0, 1, 3, 7}, {0, 1, 5, 7}, {0, 2, 3, 7}, {0, 2, 6, 7}, {0, 4, 5, 7}, {0, 4, 6, 7}};

class LatticeCutter {
public:
    LatticeCutter(const Field& field, const SampleBox& sampleBox);
    TriangleMesh run();

private:
    int node(int x, int y, int z) const { return (z * countY + y) * countX + x; }
    Vec3 position(int x, int y, int z) const { return box.low + Vec3{x * box.cell, y * box.cell, z * box.cell}; }
    void cutCube(int x, int y, int z);
    void cutTetrahedron(int x, int y, int z, const int (&corners)[4]);
    int edgePoint(int x, int y, int z, int cornerA, int cornerB);
    void addTriangle(int a, int b, int c, const Vec3& outward);

    SampleBox box;
    int countX;
    int countY;
    int countZ;
    std::vector<double> values;
    std::vector<int> edgePoints; ///< point on the edge from a node along each of the 7 directions, -1 for none yet
    TriangleMesh mesh;
};

LatticeCutter::LatticeCutter(const Field& field, const SampleBox& sampleBox)
    : box(sampleBox),
      countX(static_cast<int>((box.high.x - box.low.x) / box.cell) + 2),
      countY(static_cast<int>((box.high.y - box.low.y) / box.cell) + 2),
      countZ(static_cast<int>((box.high.z - box.low.z) / box.cell) + 2) {
    const std::size_t nodes = static_cast<std::size_t>(countX) * static_cast<std::size_t>(countY * countZ);
    values.reserve(nodes);
    for (int z = 0; z < countZ; ++z) {
        for (int y = 0; y < countY; ++y) {
            for (int x = 0; x < countX; ++x)
                values.push_back(field(position(x, y, z)));
        }
    }
    edgePoints.assign(nodes * 8, -1);
}

TriangleMesh LatticeCutter::run() {
    for (int z = 0; z + 1 < countZ; ++z) {
        for (int y = 0; y + 1 < countY; ++y) {
            for (int x = 0; x + 1 < countX; ++x)
                cutCube(x, y, z);
        }
    }
    return std::move(mesh);
}

void LatticeCutter::cutCube(int x, int y, int z) {
    int inside = 0;
    for (int c = 0; c < 8; ++c) {
        if (values[static_cast<std::size_t>(node(x + (c & 1), y + ((c >> 1) & 1), z + (c >> 2)))] < 0)
            ++inside;
    }
    if (inside == 0 || inside == 8)
        return;
    for (const auto& corners : tetrahedra)
        cutTetrahedron(x, y, z, corners);
}

void LatticeCutter::cutTetrahedron(int x, int y, int z, const int (&corners)[4]) {
    int in[4];
    int out[4];
    int inCount = 0;
    int outCount = 0;
    Vec3 inSum;
    Vec3 outSum;
    for (const int c : corners) {
        const int cx = x + (c & 1);
        const int cy = y + ((c >> 1) & 1);
        const int cz = z + (c >> 2);
        if (values[static_cast<std::size_t>(node(cx, cy, cz))] < 0) {
            in[inCount++] = c;
            inSum = inSum + position(cx, cy, cz);
        } else {
            out[outCount++] = c;
            outSum = outSum + position(cx, cy, cz);
        }
    }
    if (inCount == 0 || outCount == 0)
        return;
    const Vec3 outward = outSum * (1.0 / outCount) - inSum * (1.0 / inCount);
    if (inCount == 2) {
        const int a = edgePoint(x, y, z, in[0], out[0]);
        const int b = edgePoint(x, y, z, in[0], out[1]);
        const int c = edgePoint(x, y, z, in[1], out[1]);
        const int d = edgePoint(x, y, z, in[1], out[0]);
        addTriangle(a, b, c, outward);
        addTriangle(a, c, d, outward);
    } else {
        const int apex = inCount == 1 ? in[0] : out[0];
        const int* base = inCount == 1 ? out : in;
        // In statements of their own: each call may number a new point, and a call's arguments are evaluated in any
        // order.
        const int c = edgePoint(x, y, z, apex, base[2]);
        const int b = edgePoint(x, y, z, apex, base[1]);
        const int a = edgePoint(x, y, z, apex, base[0]);
        addTriangle(a, b, c, outward);
    }
}

int LatticeCutter::edgePoint(int x, int y, int z, int cornerA, int cornerB) {
    const int low = cornerA & cornerB;
    const int high = cornerA | cornerB;
    const int lx = x + (low & 1);
    const int ly = y + ((low >> 1) & 1);
    const int lz = z + (low >> 2);
    const int hx = x + (high & 1);
    const int hy = y + ((high >> 1) & 1);
    const int hz = z + (high >> 2);
    int& point = edgePoints[static_cast<std::size_t>(node(lx, ly, lz)) * 8 + static_cast<std::size_t>(high ^ low)];
    if (point < 0) {
        const double lowValue = values[static_cast<std::size_t>(node(lx, ly, lz))];
        const double highValue = values[static_cast<std::size_t>(node(hx, hy, hz))];
        // Kept off the nodes: a point on a node would coincide with those of the node's other edges.
        const double f = clamp(lowValue / (lowValue - highValue), 0.05, 0.95);
        point = static_cast<int>(mesh.points.size());
        mesh.points.push_back(position(lx, ly, lz) + (position(hx, hy, hz) - position(lx, ly, lz)) * f);
    }
    return point;
}

void LatticeCutter::addTriangle(int a, int b, int c, const Vec3& outward) {
    const std::array<int, 3> t{a, b, c};
    if (dot(triangleCross(mesh, t), outward) >= 0) {
        mesh.triangles.push_back(t);
    } else {
        mesh.triangles.push_back({a, c, b});
    }
}

} // namespace

TriangleMesh polygonise(const Field& field, const SampleBox& box) {
    return LatticeCutter(field, box).run();
}
