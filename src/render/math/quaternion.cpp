#include "render/math/quaternion.h"

#include <cmath>
#include <numbers>

namespace {

/// How close to parallel or opposite two rotations may be before the arc between them is treated specially.
constexpr float slerpEpsilon = 0.05f;

/// Sines and cosines of three angles: r about X, p about Y, y about Z.
struct EulerTerms {
    float cr, sr, cp, sp, cy, sy;

    explicit EulerTerms(const Vector3& a)
        : cr(std::cos(a.x)),
          sr(std::sin(a.x)),
          cp(std::cos(a.y)),
          sp(std::sin(a.y)),
          cy(std::cos(a.z)),
          sy(std::sin(a.z)) {}
};

} // namespace

Quaternion Quaternion::fromEuler(const Vector3& angles) {
    const EulerTerms e(angles * 0.5f);
    Quaternion q(e.sr * e.cp * e.cy - e.cr * e.sp * e.sy, e.cr * e.sp * e.cy + e.sr * e.cp * e.sy,
                 e.cr * e.cp * e.sy - e.sr * e.sp * e.cy, e.cr * e.cp * e.cy + e.sr * e.sp * e.sy);
    q.normalize();
    return q;
}

void Quaternion::normalize() {
    const float lengthSquared = dot(*this);
    if (lengthSquared != 1.0f)
        *this *= 1.0f / std::sqrt(lengthSquared);
}

Matrix Quaternion::toMatrix() const {
    return Matrix({1 - 2 * y * y - 2 * z * z, 2 * (x * y + z * w), 2 * (x * z - y * w), 0, //
                   2 * (x * y - z * w), 1 - 2 * x * x - 2 * z * z, 2 * (y * z + x * w), 0, //
                   2 * (x * z + y * w), 2 * (y * z - x * w), 1 - 2 * x * x - 2 * y * y, 0, //
                   0, 0, 0, 1});
}

Quaternion slerp(Quaternion q1, Quaternion q2, float f) {
    float c = q1.dot(q2);
    if (c < 0.0f) {
        q1 *= -1.0f;
        c = -c;
    }
    float k1;
    float k2;
    if (1.0f + c > slerpEpsilon) {
        if (1.0f - c < slerpEpsilon) {
            k1 = 1.0f - f;
            k2 = f;
        } else {
            const float omega = std::acos(c);
            k1 = std::sin((1.0f - f) * omega) / std::sin(omega);
            k2 = std::sin(f * omega) / std::sin(omega);
        }
    } else {
        q2 = Quaternion(-q1.y, q1.x, -q1.w, q1.z);
        k1 = std::sin((0.5f - f) * std::numbers::pi_v<float>);
        k2 = std::sin(f * std::numbers::pi_v<float>);
    }
    return q1 * k1 + q2 * k2;
}

Matrix matrixFromEuler(const Vector3& angles) {
    const EulerTerms e(angles);
    return Matrix({e.cp * e.cy, e.cp * e.sy, -e.sp, 0,                                                       //
                   e.sr * e.sp * e.cy - e.cr * e.sy, e.sr * e.sp * e.sy + e.cr * e.cy, e.sr * e.cp, 0,       //
                   e.cr * e.sp * e.cy + e.sr * e.sy, e.cr * e.sp * e.sy - e.sr * e.cy, e.cr * e.cp, 0, 0, 0, //
                   0, 1});
}
