#include "core/scene/bounding_box.h"

#include "render/math/matrix.h"

void BoundingBox::set(const Vector3& minCorner, const Vector3& maxCorner) {
    min = minCorner;
    max = maxCorner;
}

void BoundingBox::extend(float x, float y, float z) {
    const auto extendAxis = [](float& low, float& high, float value) {
        if (value < low)
            low = value;
        if (value > high)
            high = value;
    };
    extendAxis(min.x, max.x, x);
    extendAxis(min.y, max.y, y);
    extendAxis(min.z, max.z, z);
}

bool BoundingBox::intersects(const BoundingBox& other) const {
    const auto apart = [](float low, float high, float otherLow, float otherHigh) {
        return otherHigh < low || otherLow > high;
    };
    return !apart(min.x, max.x, other.min.x, other.max.x) && !apart(min.y, max.y, other.min.y, other.max.y) &&
           !apart(min.z, max.z, other.min.z, other.max.z);
}

BoundingBox BoundingBox::transformed(const Matrix& matrix) const {
    const Vector3 first = matrix.transform(min);
    BoundingBox result(first, first);
    for (unsigned corner = 1; corner < 8; ++corner) {
        const Vector3 point((corner & 1u) != 0 ? max.x : min.x, (corner & 2u) != 0 ? max.y : min.y,
                            (corner & 4u) != 0 ? max.z : min.z);
        result.extend(matrix.transform(point));
    }
    return result;
}

void BoundingBox::merge(const BoundingBox& other) {
    if (isEmpty()) {
        *this = other;
    } else if (!other.isEmpty()) {
        extend(other.min);
        extend(other.max);
    }
}

bool BoundingBox::isEmpty() const {
    const Vector3 origin(0.0f, 0.0f, 0.0f);
    return min == origin && max == origin;
}
