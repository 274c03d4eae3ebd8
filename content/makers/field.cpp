#include "field.h"

#include "exact_math.h"

#include <algorithm>

double smoothUnion(double a, double b, double k) {
    const double h = std::max(k - std::fabs(a - b), 0.0) / k;
    return std::min(a, b) - h * h * k * 0.25;
}

double smoothIntersection(double a, double b, double k) {
    return -smoothUnion(-a, -b, k);
}

double segmentDistance(const Vec3& p, const Vec3& a, const Vec3& b) {
    const Vec3 axis = b - a;
    const double f = clamp(dot(p - a, axis) / dot(axis, axis), 0, 1);
    return length(p - (a + axis * f));
}

Vec3 gradient(const Field& field, const Vec3& p) {
    constexpr double e = 0.25;
    return Vec3{field({p.x + e, p.y, p.z}) - field({p.x - e, p.y, p.z}),
                field({p.x, p.y + e, p.z}) - field({p.x, p.y - e, p.z}),
                field({p.x, p.y, p.z + e}) - field({p.x, p.y, p.z - e})} *
           (0.5 / e);
}

Vec3 projectToSurface(const Field& field, const Vec3& p, double reach) {
    Vec3 q = p;
    for (int step = 0; step < 3; ++step) {
        const double value = field(q);
        if (std::fabs(value) < 1e-3)
            break;
        const Vec3 slope = gradient(field, q);
        const double steepness = std::max(dot(slope, slope), 0.05);
        const Vec3 next = q - slope * (value / steepness);
        if (length(next - p) > reach)
            break;
        q = next;
    }
    return q;
}
