#pragma once

#include "render/math/matrix.h"

#include <array>

/// While false every visibility test answers that the object is visible.
extern bool frustumCulling;

/// The six planes of a view volume; answers whether points, spheres and boxes may be seen.
class Frustrum {
public:
    Frustrum();
    virtual ~Frustrum();
    Frustrum(const Frustrum&) = delete;
    Frustrum& operator=(const Frustrum&) = delete;

    /// Takes the planes from the product of the two matrices; points inside have positive distances.
    void calculate(const Matrix& projection, const Matrix& modelview);
    /// False for a point on a plane or behind it.
    bool pointInFrustum(float x, float y, float z) const;
    bool sphereInFrustum(float x, float y, float z, float radius) const;
    /// A cube of half-edge `size` around a centre.
    bool cubeInFrustum(float x, float y, float z, float size) const;
    /// The box between two opposite corners, given in any order; one corner on a plane suffices.
    bool boxInFrustum(float x1, float y1, float z1, float x2, float y2, float z2) const;

private:
    struct FrustumPlane {
        float a = 0.0f;
        float b = 0.0f;
        float c = 0.0f;
        float d = 0.0f;

        float distanceTo(float x, float y, float z) const { return a * x + b * y + c * z + d; }
        void normalize();
    };

    /// right, left, bottom, top, far, near
    std::array<FrustumPlane, 6> planes;
};
