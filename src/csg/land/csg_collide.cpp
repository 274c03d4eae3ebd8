#include "csg/land/csg_object.h"
#include "game/collision/collision_detection.h"
#include "game/collision/collision_packet.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

/// Slack around a sweep, in ellipsoid space: nearSlack always, and more for what is far or large, because the contact
/// tests run in single precision and their error grows with the square of the distances they handle.
constexpr double nearSlack = 0.1;
constexpr double slackPerSquare = 1e-5;

/// Tells which boxes a mover's sweep can touch. A box that holds a box which passes passes, too.
class SweepBox {
public:
    explicit SweepBox(const CollisionPacket& packet)
        : axes{axisOf(packet.radius.x, packet.basePoint.x, packet.velocity.x),
               axisOf(packet.radius.y, packet.basePoint.y, packet.velocity.y),
               axisOf(packet.radius.z, packet.basePoint.z, packet.velocity.z)} {}

    bool touches(const csgBounds& box) const {
        const std::array<double, 3> low{box.min.x / axes[0].radius, box.min.y / axes[1].radius,
                                        box.min.z / axes[2].radius};
        const std::array<double, 3> high{box.max.x / axes[0].radius, box.max.y / axes[1].radius,
                                         box.max.z / axes[2].radius};
        double squares = 0.0;
        for (std::size_t i = 0; i < 3; ++i) {
            const double reach =
                std::max({std::fabs(low[i]), std::fabs(high[i]), std::fabs(axes[i].low), std::fabs(axes[i].high)});
            squares += reach * reach;
        }
        const double slack = nearSlack + slackPerSquare * squares;
        // Written so that what is not a number passes.
        for (std::size_t i = 0; i < 3; ++i) {
            if (low[i] > axes[i].high + slack || high[i] < axes[i].low - slack)
                return false;
        }
        return true;
    }

private:
    struct Axis {
        double radius;
        double low; ///< reach of the unit sphere along the sweep
        double high;
    };

    static Axis axisOf(float radius, float start, float displacement) {
        const double from = static_cast<double>(start);
        const double to = from + static_cast<double>(displacement);
        return {static_cast<double>(radius), std::min(from, to) - 1.0, std::max(from, to) + 1.0};
    }

    std::array<Axis, 3> axes;
};

Vector3 toEllipsoid(const csgVector& v, const Vector3& radius) {
    return Vector3(static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)) / radius;
}

} // namespace

int csgObject::getCollisionType() {
    return 1;
}

void csgObject::collide(CollisionPacket* packet) {
    const SweepBox sweep(*packet);
    for (const csgFaceList& part : getParts()) {
        part.forEachWhere([&](const csgBounds& box) { return sweep.touches(box); },
                          [&](std::size_t index) {
                              const csgFace& face = *part[index];
                              collision->checkTriangle(packet, toEllipsoid(face.cornerPosition(0), packet->radius),
                                                       toEllipsoid(face.cornerPosition(1), packet->radius),
                                                       toEllipsoid(face.cornerPosition(2), packet->radius));
                              return true;
                          });
    }
}
