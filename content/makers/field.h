#pragma once

#include "vec3.h"

#include <functional>

// Solids as scalar fields: negative inside, positive outside, growing about as fast as the distance near the surface.
// They are combined with plain or smooth minimum (union) and maximum (intersection), then surfaced by surface_mesher.h.

/// A solid.
using Field = std::function<double(const Vec3&)>;

/// Smaller of a and b with the crease rounded over a distance k.
double smoothUnion(double a, double b, double k);
/// Larger of a and b with the crease rounded over a distance k.
double smoothIntersection(double a, double b, double k);
/// Distance from p to the segment a-b.
double segmentDistance(const Vec3& p, const Vec3& a, const Vec3& b);
/// Slope of the field at p by central differences.
Vec3 gradient(const Field& field, const Vec3& p);
/// p moved onto the surface along the slope, at most reach away.
Vec3 projectToSurface(const Field& field, const Vec3& p, double reach);
