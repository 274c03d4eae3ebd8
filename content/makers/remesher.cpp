#include "remesher.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>

namespace {

/// A triangle may turn by at most the angle of this cosine in one step.
constexpr double leastTurnCosine = 0.35;
/// Edges longer than this part of the wanted length are split, shorter than the other are collapsed.
constexpr double splitAbove = 1.33;
constexpr double collapseBelow = 0.8;

void drop(std::vector<int>& list, int value) {
    list.erase(std::find(list.begin(), list.end(), value));
}

/// 1 for an equilateral triangle, 0 for a flat one.
double roundness(const Vec3& a, const Vec3& b, const Vec3& c) {
    const Vec3 ab = b - a;
    const Vec3 bc = c - b;
    const Vec3 ca = a - c;
    return 2 * 1.7320508075688772 * length(cross(ab, -ca)) / (dot(ab, ab) + dot(bc, bc) + dot(ca, ca));
}

} // namespace

Remesher::Remesher(TriangleMesh mesh, Field surface, EdgeLength wanted)
    : points(std::move(mesh.points)),
      triangles(std::move(mesh.triangles)),
      fans(points.size()),
      field(std::move(surface)),
      wantedLength(std::move(wanted)) {
    for (std::size_t t = 0; t < triangles.size(); ++t) {
        for (const int v : triangles[t])
            fan(v).push_back(static_cast<int>(t));
    }
}

void Remesher::run(int rounds) {
    for (int i = 0; i < rounds; ++i) {
        splitLongEdges();
        collapseShortEdges();
        flipEdges();
        slidePoints();
    }
    flipEdges();
}

TriangleMesh Remesher::result() const {
    TriangleMesh mesh;
    std::vector<int> renamed(points.size(), -1);
    for (const Triangle& t : triangles) {
        if (dead(t))
            continue;
        Triangle copy{};
        for (std::size_t k = 0; k < 3; ++k) {
            int& name = renamed[static_cast<std::size_t>(t[k])];
            if (name < 0) {
                name = static_cast<int>(mesh.points.size());
                mesh.points.push_back(point(t[k]));
            }
            copy[k] = name;
        }
        mesh.triangles.push_back(copy);
    }
    return mesh;
}

Vec3 Remesher::areaVector(const Triangle& t) const {
    return cross(point(t[1]) - point(t[0]), point(t[2]) - point(t[0]));
}

int Remesher::triangleOfEdge(int a, int b) const {
    for (const int t : fan(a)) {
        const Triangle& c = triangle(t);
        if ((c[0] == a && c[1] == b) || (c[1] == a && c[2] == b) || (c[2] == a && c[0] == b))
            return t;
    }
    return -1;
}

int Remesher::opposite(int t, int a, int b) const {
    const Triangle& c = triangle(t);
    return c[0] + c[1] + c[2] - a - b;
}

std::vector<int> Remesher::neighbours(int v) const {
    std::vector<int> ring;
    for (const int t : fan(v)) {
        for (const int c : triangle(t)) {
            if (c != v && std::find(ring.begin(), ring.end(), c) == ring.end())
                ring.push_back(c);
        }
    }
    return ring;
}

bool Remesher::joined(int a, int b) const {
    return std::any_of(fan(a).begin(), fan(a).end(), [&](int t) {
        const Triangle& c = triangle(t);
        return c[0] == b || c[1] == b || c[2] == b;
    });
}

void Remesher::splitLongEdges() {
    const std::size_t before = triangles.size();
    for (std::size_t t = 0; t < before; ++t) {
        for (std::size_t k = 0; k < 3; ++k) {
            const Triangle& c = triangles[t];
            if (dead(c))
                break;
            const int a = c[k];
            const int b = c[(k + 1) % 3];
            if (a < b && edge(a, b) > splitAbove * wantedAlong(a, b)) {
                split(a, b);
                break;
            }
        }
    }
}

void Remesher::split(int a, int b) {
    const int t1 = triangleOfEdge(a, b);
    const int t2 = triangleOfEdge(b, a);
    const int c = opposite(t1, a, b);
    const int d = opposite(t2, a, b);
    const Vec3 middle = (point(a) + point(b)) * 0.5;
    const int m = static_cast<int>(points.size());
    points.push_back(projectToSurface(field, middle, 0.2 * edge(a, b)));
    fans.emplace_back();
    const int t3 = static_cast<int>(triangles.size());
    const int t4 = t3 + 1;
    triangle(t1) = {a, m, c};
    triangle(t2) = {b, m, d};
    triangles.push_back({m, b, c});
    triangles.push_back({m, a, d});
    drop(fan(b), t1);
    fan(b).push_back(t3);
    drop(fan(a), t2);
    fan(a).push_back(t4);
    fan(c).push_back(t3);
    fan(d).push_back(t4);
    fan(m) = {t1, t2, t3, t4};
}

void Remesher::collapseShortEdges() {
    for (std::size_t t = 0; t < triangles.size(); ++t) {
        for (std::size_t k = 0; k < 3; ++k) {
            const Triangle& c = triangles[t];
            if (dead(c))
                break;
            const int a = c[k];
            const int b = c[(k + 1) % 3];
            if (a < b && edge(a, b) < collapseBelow * wantedAlong(a, b) && collapse(a, b))
                break;
        }
    }
}

bool Remesher::collapse(int a, int b) {
    const int t1 = triangleOfEdge(a, b);
    const int t2 = triangleOfEdge(b, a);
    const int c = opposite(t1, a, b);
    const int d = opposite(t2, a, b);
    if (fan(c).size() <= 3 || fan(d).size() <= 3)
        return false;
    const std::vector<int> ringA = neighbours(a);
    const std::vector<int> ringB = neighbours(b);
    const auto common = std::count_if(ringA.begin(), ringA.end(),
                                      [&](int v) { return std::find(ringB.begin(), ringB.end(), v) != ringB.end(); });
    if (common != 2)
        return false; // any other common neighbour would pinch the surface
    const Vec3 middle = projectToSurface(field, (point(a) + point(b)) * 0.5, 0.4 * wantedAlong(a, b));
    const Vec3 ends[] = {middle, point(a), point(b)};
    const auto* const target = std::find_if(std::begin(ends), std::end(ends), [&](const Vec3& end) {
        return collapseKeepsShape(a, b, end) && collapseKeepsShape(b, a, end);
    });
    if (target == std::end(ends))
        return false;
    const Vec3 place = *target;
    for (const int gone : {t1, t2}) {
        drop(fan(a), gone);
        drop(fan(b), gone);
    }
    drop(fan(c), t1);
    drop(fan(d), t2);
    triangle(t1)[0] = -1;
    triangle(t2)[0] = -1;
    for (const int t : fan(b)) {
        for (int& corner : triangle(t)) {
            if (corner == b)
                corner = a;
        }
        fan(a).push_back(t);
    }
    fan(b).clear();
    point(a) = place;
    return true;
}

bool Remesher::collapseKeepsShape(int a, int b, const Vec3& target) const {
    for (const int t : fan(a)) {
        const Triangle& c = triangle(t);
        if (c[0] == b || c[1] == b || c[2] == b)
            continue;
        Vec3 corner[3];
        for (std::size_t k = 0; k < 3; ++k) {
            corner[k] = c[k] == a ? target : point(c[k]);
            if (c[k] != a && length(point(c[k]) - target) > splitAbove * wantedAlong(a, c[k]))
                return false;
        }
        const Vec3 was = areaVector(c);
        const Vec3 is = cross(corner[1] - corner[0], corner[2] - corner[0]);
        if (dot(was, is) < leastTurnCosine * length(was) * length(is))
            return false;
        if (roundness(corner[0], corner[1], corner[2]) < 0.15)
            return false;
    }
    return true;
}

void Remesher::flipEdges() {
    for (std::size_t t = 0; t < triangles.size(); ++t) {
        for (std::size_t k = 0; k < 3; ++k) {
            const Triangle& c = triangles[t];
            if (dead(c))
                break;
            const int a = c[k];
            const int b = c[(k + 1) % 3];
            if (a < b && flip(a, b))
                break;
        }
    }
}

bool Remesher::flip(int a, int b) {
    const int t1 = triangleOfEdge(a, b);
    const int t2 = triangleOfEdge(b, a);
    const int c = opposite(t1, a, b);
    const int d = opposite(t2, a, b);
    if (fan(a).size() <= 3 || fan(b).size() <= 3 || joined(c, d))
        return false;
    const auto excess = [&](int v, int change) { return std::abs(static_cast<int>(fan(v).size()) + change - 6); };
    const int before = excess(a, 0) + excess(b, 0) + excess(c, 0) + excess(d, 0);
    const int after = excess(a, -1) + excess(b, -1) + excess(c, 1) + excess(d, 1);
    const double oldWorst = std::min(roundness(point(a), point(b), point(c)), roundness(point(b), point(a), point(d)));
    const double newWorst = std::min(roundness(point(d), point(c), point(a)), roundness(point(c), point(d), point(b)));
    const bool wanted =
        after < before ? newWorst > std::min(oldWorst, 0.6) : oldWorst < 0.35 && newWorst > oldWorst * 1.5;
    if (!wanted)
        return false;
    const Vec3 old1 = normalized(areaVector({a, b, c}));
    const Vec3 old2 = normalized(areaVector({b, a, d}));
    const Vec3 new1 = normalized(areaVector({d, c, a}));
    const Vec3 new2 = normalized(areaVector({c, d, b}));
    const Vec3 mean = normalized(old1 + old2);
    if (dot(new1, mean) < 0.8 || dot(new2, mean) < 0.8)
        return false;
    triangle(t1) = {d, c, a};
    triangle(t2) = {c, d, b};
    drop(fan(a), t2);
    drop(fan(b), t1);
    fan(c).push_back(t2);
    fan(d).push_back(t1);
    return true;
}

void Remesher::slidePoints() {
    for (std::size_t v = 0; v < points.size(); ++v) {
        if (fans[v].empty())
            continue;
        const int name = static_cast<int>(v);
        Vec3 normal;
        Vec3 centre;
        double weight = 0;
        for (const int t : fans[v]) {
            const Triangle& c = triangle(t);
            const Vec3 area = areaVector(c);
            const double size = length(area);
            normal = normal + area;
            centre = centre + (point(c[0]) + point(c[1]) + point(c[2])) * (size / 3);
            weight += size;
        }
        normal = normalized(normal);
        Vec3 step = centre * (1 / weight) - points[v];
        step = (step - normal * dot(step, normal)) * 0.8;
        const Vec3 target = projectToSurface(field, points[v] + step, 0.5 * wantedLength(points[v]));
        if (moveKeepsShape(name, target))
            points[v] = target;
    }
}

bool Remesher::moveKeepsShape(int v, const Vec3& target) const {
    for (const int t : fan(v)) {
        const Triangle& c = triangle(t);
        Vec3 corner[3];
        for (std::size_t k = 0; k < 3; ++k)
            corner[k] = c[k] == v ? target : point(c[k]);
        const Vec3 was = areaVector(c);
        const Vec3 is = cross(corner[1] - corner[0], corner[2] - corner[0]);
        if (dot(was, is) < leastTurnCosine * length(was) * length(is))
            return false;
    }
    return true;
}
