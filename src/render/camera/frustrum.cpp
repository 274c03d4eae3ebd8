#include "render/camera/frustrum.h"

#include "core/base/log.h"

#include <cmath>

bool frustumCulling = true;

Frustrum::Frustrum() {
    logLine("Frustrum Konstruktor\n");
}

Frustrum::~Frustrum() {
    logLine("Frustrum Destruktor\n");
}

void Frustrum::FrustumPlane::normalize() {
    const float length = std::sqrt(a * a + b * b + c * c);
    a /= length;
    b /= length;
    c /= length;
    d /= length;
}

void Frustrum::calculate(const Matrix& projection, const Matrix& modelview) {
    const Matrix clip = projection * modelview;
    // Each plane is the fourth row of the clip matrix minus or plus one of the other rows.
    const auto minusRow = [&clip](int row) {
        return FrustumPlane{clip[3] - clip[row], clip[7] - clip[4 + row], clip[11] - clip[8 + row],
                            clip[15] - clip[12 + row]};
    };
    const auto plusRow = [&clip](int row) {
        return FrustumPlane{clip[3] + clip[row], clip[7] + clip[4 + row], clip[11] + clip[8 + row],
                            clip[15] + clip[12 + row]};
    };
    planes = {minusRow(0), plusRow(0), plusRow(1), minusRow(1), minusRow(2), plusRow(2)};
    for (FrustumPlane& plane : planes)
        plane.normalize();
}

bool Frustrum::pointInFrustum(float x, float y, float z) const {
    if (!frustumCulling)
        return true;
    for (const FrustumPlane& plane : planes)
        if (plane.distanceTo(x, y, z) <= 0.0f)
            return false;
    return true;
}

bool Frustrum::sphereInFrustum(float x, float y, float z, float radius) const {
    if (!frustumCulling)
        return true;
    for (const FrustumPlane& plane : planes)
        if (plane.distanceTo(x, y, z) <= -radius)
            return false;
    return true;
}

bool Frustrum::cubeInFrustum(float x, float y, float z, float size) const {
    return boxInFrustum(x - size, y - size, z - size, x + size, y + size, z + size);
}

bool Frustrum::boxInFrustum(float x1, float y1, float z1, float x2, float y2, float z2) const {
    if (!frustumCulling)
        return true;
    const auto anyCornerInside = [&](const FrustumPlane& plane) {
        for (unsigned corner = 0; corner < 8; ++corner)
            if (plane.distanceTo((corner & 1u) != 0 ? x2 : x1, (corner & 2u) != 0 ? y2 : y1,
                                 (corner & 4u) != 0 ? z2 : z1) >= 0.0f)
                return true;
        return false;
    };
    for (const FrustumPlane& plane : planes)
        if (!anyCornerInside(plane))
            return false;
    return true;
}
