// The contact tests of a swept unit sphere, in ellipsoid space.

#include "game/collision/collision_detection.h"

#include "game/collision/collision_packet.h"
#include "game/collision/plane.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace {

/// The earliest contact found so far on one triangle; `time` is a fraction of the sweep.
struct TriangleContact {
    float time = 1.0f;
    bool found = false;
    Vector3 point{0.0f, 0.0f, 0.0f};

    void take(float newTime, const Vector3& newPoint) {
        time = newTime;
        found = true;
        point = newPoint;
    }
};

void checkVertex(const CollisionPacket& packet, const Vector3& vertex, TriangleContact& contact) {
    const float a = packet.velocity.lengthSquared();
    const float b = 2.0f * packet.velocity.dot(packet.basePoint - vertex);
    const float c = (vertex - packet.basePoint).lengthSquared() - 1.0f;
    float time = 0.0f;
    if (lowestRoot(a, b, c, contact.time, time))
        contact.take(time, vertex);
}

void checkEdge(const CollisionPacket& packet, const Vector3& start, const Vector3& end, TriangleContact& contact) {
    const Vector3 edge = end - start;
    const Vector3 toStart = start - packet.basePoint;
    const float edgeLen2 = edge.lengthSquared();
    const float edgeDotVel = edge.dot(packet.velocity);
    const float edgeDotToStart = edge.dot(toStart);
    const float a = edgeLen2 * -packet.velocity.lengthSquared() + edgeDotVel * edgeDotVel;
    const float b = edgeLen2 * (2.0f * packet.velocity.dot(toStart)) - 2.0f * edgeDotVel * edgeDotToStart;
    const float c = edgeLen2 * (1.0f - toStart.lengthSquared()) + edgeDotToStart * edgeDotToStart;
    float time = 0.0f;
    if (!lowestRoot(a, b, c, contact.time, time))
        return;
    const float f = (edgeDotVel * time - edgeDotToStart) / edgeLen2;
    if (f >= 0.0f && f <= 1.0f)
        contact.take(time, start + edge * f);
}

void recordContact(CollisionPacket& packet, float time, const Vector3& point) {
    const double distance = static_cast<double>(time * packet.velocity.length());
    if (packet.foundCollision && distance >= packet.nearestDistance)
        return;
    packet.nearestDistance = distance;
    packet.intersectionPoint = point;
    packet.foundCollision = true;
}

/// When the sphere touches the plane: false when it never does during the sweep. `embedded` tells that it moves along a
/// plane that cuts it; `firstTime` is the start of the contact as a fraction of the sweep.
bool touchesPlane(const CollisionPacket& packet, const Plane& plane, bool& embedded, float& firstTime) {
    const double distance = plane.signedDistanceTo(packet.basePoint);
    const float normalDotVelocity = plane.normal.dot(packet.velocity);
    embedded = normalDotVelocity == 0.0f;
    firstTime = 0.0f;
    if (embedded)
        return std::fabs(distance) < 1.0;
    const double speed = static_cast<double>(normalDotVelocity);
    const double time0 = (-1.0 - distance) / speed;
    const double time1 = (1.0 - distance) / speed;
    const double first = std::min(time0, time1);
    const double last = std::max(time0, time1);
    firstTime = static_cast<float>(std::clamp(first, 0.0, 1.0));
    return first <= 1.0 && last >= 0.0;
}

} // namespace

void CollisionDetection::checkTriangle(CollisionPacket* packet, const Vector3& p1, const Vector3& p2,
                                       const Vector3& p3) {
    const Plane plane(p1, p2, p3);
    if (!plane.isFrontFacingTo(packet->normalizedVelocity))
        return;
    bool embedded = false;
    float firstTime = 0.0f;
    if (!touchesPlane(*packet, plane, embedded, firstTime))
        return;

    if (!embedded) {
        const Vector3 planePoint = packet->basePoint - plane.normal + packet->velocity * firstTime;
        if (pointInTriangle(planePoint, p1, p2, p3)) {
            recordContact(*packet, firstTime, planePoint);
            return;
        }
    }
    TriangleContact contact;
    checkVertex(*packet, p1, contact);
    checkVertex(*packet, p2, contact);
    checkVertex(*packet, p3, contact);
    checkEdge(*packet, p1, p2, contact);
    checkEdge(*packet, p2, p3, contact);
    checkEdge(*packet, p3, p1, contact);
    if (contact.found)
        recordContact(*packet, contact.time, contact.point);
}

void CollisionDetection::checkSphere(CollisionPacket* packet, const Vector3& centre) {
    const float a = packet->velocity.lengthSquared();
    const float b = 2.0f * packet->velocity.dot(packet->basePoint - centre);
    const float c = (centre - packet->basePoint).lengthSquared() - 4.0f;
    float time = 0.0f;
    if (lowestRoot(a, b, c, 1.0f, time))
        recordContact(*packet, time, centre);
}

bool lowestRoot(float a, float b, float c, float limit, float& root) {
    const float determinant = b * b - 4.0f * a * c;
    if (determinant < 0.0f)
        return false;
    const float spread = std::sqrt(determinant);
    float first = (-b - spread) / (2.0f * a);
    float second = (-b + spread) / (2.0f * a);
    if (first > second)
        std::swap(first, second);
    for (const float candidate : {first, second}) {
        if (candidate > 0.0f && candidate < limit) {
            root = candidate;
            return true;
        }
    }
    return false;
}

bool pointInTriangle(const Vector3& point, const Vector3& a, const Vector3& b, const Vector3& c) {
    const Vector3 e10 = b - a;
    const Vector3 e20 = c - a;
    const float aa = e10.dot(e10);
    const float bb = e10.dot(e20);
    const float cc = e20.dot(e20);
    const Vector3 vp = point - a;
    const float d = vp.dot(e10);
    const float e = vp.dot(e20);
    const float x = d * cc - e * bb;
    const float y = e * aa - d * bb;
    const float z = x + y - (aa * cc - bb * bb);
    // On the sign bits, so that -0 counts as negative: x and y must not be, z must.
    const auto bits = [](float value) { return std::bit_cast<std::uint32_t>(value); };
    return ((bits(z) & ~(bits(x) | bits(y))) & 0x80000000u) != 0;
}
