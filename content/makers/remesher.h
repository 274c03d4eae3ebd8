#pragma once

#include "field.h"
#include "triangle_mesh.h"

#include <functional>

/// Wanted edge length at a point, world units.
using EdgeLength = std::function<double(const Vec3&)>;

/// Makes the triangles of a closed mesh even. Long edges are split, short ones collapsed, edges flipped towards six
/// triangles around a point, and points slid along the surface of the field; every step keeps the mesh closed and
/// two-sided and refuses to turn a triangle over. Repeats in index order, so the result depends on nothing else.
class Remesher {
public:
    Remesher(TriangleMesh mesh, Field surface, EdgeLength wanted);
    /// Runs the given number of rounds; eight to twelve settle a mesh of polygonise.
    void run(int rounds);
    /// The mesh without unused points.
    TriangleMesh result() const;

private:
    using Triangle = std::array<int, 3>;

    bool dead(const Triangle& t) const { return t[0] < 0; }
    Vec3& point(int v) { return points[static_cast<std::size_t>(v)]; }
    const Vec3& point(int v) const { return points[static_cast<std::size_t>(v)]; }
    std::vector<int>& fan(int v) { return fans[static_cast<std::size_t>(v)]; }
    const std::vector<int>& fan(int v) const { return fans[static_cast<std::size_t>(v)]; }
    Triangle& triangle(int t) { return triangles[static_cast<std::size_t>(t)]; }
    const Triangle& triangle(int t) const { return triangles[static_cast<std::size_t>(t)]; }
    double edge(int a, int b) const { return length(point(b) - point(a)); }
    double wantedAlong(int a, int b) const { return wantedLength((point(a) + point(b)) * 0.5); }
    Vec3 areaVector(const Triangle& t) const;
    /// Triangle in which the edge runs from a to b.
    int triangleOfEdge(int a, int b) const;
    int opposite(int t, int a, int b) const;
    std::vector<int> neighbours(int v) const;
    bool joined(int a, int b) const;

    void splitLongEdges();
    void collapseShortEdges();
    void flipEdges();
    void slidePoints();
    void split(int a, int b);
    bool collapse(int a, int b);
    bool collapseKeepsShape(int a, int b, const Vec3& target) const;
    bool flip(int a, int b);
    bool moveKeepsShape(int v, const Vec3& target) const;

    std::vector<Vec3> points;
    std::vector<Triangle> triangles;    ///< a removed one has -1 as its first corner
    std::vector<std::vector<int>> fans; ///< triangles around each point
    Field field;
    EdgeLength wantedLength;
};
