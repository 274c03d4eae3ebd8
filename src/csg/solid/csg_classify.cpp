#include "csg/solid/csg_classify.h"

#include "csg/solid/csg_line.h"
#include "csg/solid/csg_predicates.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

/// Farther than any hit: 3.4e38 in single precision.
constexpr double farthest = 3.3999999521443642e38;
/// Scans after which a ray that cannot be freed from a plane is taken as it is.
constexpr int mostScans = 64;
/// A direction component below this never leaves its slab.
constexpr double noMotion = 1e-200;

/// One ray and what it has met so far.
class Ray {
public:
    Ray(const csgVector& point, const csgVector& direction, const csgParts& parts)
        : line(direction, point), touching(slackAt(point)), solid(parts) {
        prepareDirection();
    }

    csgStatus classify() {
        for (int scan = 0; scan < mostScans && !scanSolid(); ++scan) {
        }
        return result();
    }

private:
    enum class Outcome { goOn, leavePart, perturbed };

    bool scanSolid();
    Outcome scanPart(const csgFaceList& part);
    Outcome testFace(const csgFace& face);
    bool meets(const csgBounds& box) const;
    void prepareDirection();
    void setClosest(const csgFace* face, double distance);
    csgStatus result() const;

    csgLine line;
    double touching;   ///< a hit this near starts on the face
    csgVector inverse; ///< of the direction; 0 where it does not move
    const csgParts& solid;
    const csgFace* closestFace = nullptr;
    double closestDistance = farthest;
    double limit = farthest; ///< what begins beyond it cannot hold the closest face
};

/// Narrows [from, to], the stretch of the ray in question, to where it is between two planes across an axis.
inline void clipToSlab(double start, double inverse, double low, double high, double& from, double& to) {
    low -= csgPlaneTolerance + start;
    high += csgPlaneTolerance - start;
    if (inverse == 0.0) {
        if (low > 0.0 || high < 0.0)
            to = -1.0;
        return;
    }
    const double a = low * inverse;
    const double b = high * inverse;
    from = std::max(from, std::min(a, b));
    to = std::min(to, std::max(a, b));
}

inline bool Ray::meets(const csgBounds& box) const {
    const csgVector& p = line.point;
    double from = 0.0;
    double to = limit;
    clipToSlab(p.x, inverse.x, box.min.x, box.max.x, from, to);
    clipToSlab(p.y, inverse.y, box.min.y, box.max.y, from, to);
    clipToSlab(p.z, inverse.z, box.min.z, box.max.z, from, to);
    return from <= to;
}

void Ray::prepareDirection() {
    const auto inverted = [](double d) { return std::fabs(d) < noMotion ? 0.0 : 1.0 / d; };
    const csgVector& d = line.direction;
    inverse = {inverted(d.x), inverted(d.y), inverted(d.z)};
}

void Ray::setClosest(const csgFace* face, double distance) {
    closestFace = face;
    closestDistance = distance;
    // The slack covers a direction that is not quite of length 1.
    limit = distance * 1.001 + 1.0;
}

/// One pass over the solid; false when the direction was perturbed and the pass has to be repeated.
bool Ray::scanSolid() {
    bool complete = true;
    setClosest(closestFace, farthest);
    for (const csgFaceList& part : solid) {
        if (scanPart(part) == Outcome::perturbed)
            complete = false;
    }
    return complete;
}

Ray::Outcome Ray::scanPart(const csgFaceList& part) {
    Outcome outcome = Outcome::goOn;
    part.forEachWhere([&](const csgBounds& box) { return meets(box); },
                      [&](std::size_t index) {
                          outcome = testFace(*part[index]);
                          return outcome == Outcome::goOn;
                      });
    return outcome;
}

Ray::Outcome Ray::testFace(const csgFace& face) {
    const double dot = face.normal.dot(line.direction);
    const csgVector hit = line.intersectPlane(face);
    if (hit == csgVector{})
        return Outcome::goOn;
    const double distance = line.signedDistance(hit);
    if (std::fabs(distance) < touching) {
        if (std::fabs(dot) < csgGeometricTolerance) {
            line.perturbDirection();
            prepareDirection();
            return Outcome::perturbed;
        }
        if (std::fabs(dot) > csgGeometricTolerance && contains(face, hit)) {
            setClosest(&face, 0.0);
            return Outcome::leavePart;
        }
    } else if (std::fabs(dot) > csgGeometricTolerance && distance > touching && distance < closestDistance &&
               contains(face, hit)) {
        setClosest(&face, distance);
    }
    return Outcome::goOn;
}

csgStatus Ray::result() const {
    if (closestFace == nullptr)
        return csgStatus::outside;
    const double dot = closestFace->normal.dot(line.direction);
    const bool onFace = std::fabs(closestDistance) < touching;
    if (dot > csgGeometricTolerance)
        return onFace ? csgStatus::coplanarSame : csgStatus::inside;
    if (dot < -csgGeometricTolerance)
        return onFace ? csgStatus::coplanarOpposite : csgStatus::outside;
    return csgStatus::unclassified;
}

/// Faces at least this high (world units) are large enough to be cut; a hole of theirs could be seen.
constexpr double thin = 0.01;

bool isCoplanar(csgStatus status) {
    return status == csgStatus::coplanarSame || status == csgStatus::coplanarOpposite;
}

} // namespace

csgStatus castRay(const csgVector& point, const csgVector& direction, const csgParts& solid) {
    return Ray(point, direction, solid).classify();
}

csgStatus castOwnRay(const csgFace& face, const csgParts& solid) {
    return castRay(face.centre(), face.normal, solid);
}

void classifyByRay(csgFace& face, const csgParts& solid) {
    const csgStatus status = castOwnRay(face, solid);
    if (status != csgStatus::unclassified)
        face.status = status;
}

bool confirmStatus(const csgFace& face, csgStatus status, const csgParts& solid) {
    // Directions that no face or edge of made content is likely to share.
    constexpr std::array<csgVector, 2> generalDirections{csgVector{0.3141592, 0.8577215, 0.4069173},
                                                         csgVector{-0.7320508, 0.2718281, -0.6247137}};
    const auto agrees = [&](const csgVector& direction) {
        const csgStatus found = castRay(face.centre(), direction, solid);
        return found == status || (isCoplanar(found) && isCoplanar(status));
    };
    return std::all_of(generalDirections.begin(), generalDirections.end(), agrees);
}

bool straddles(const csgFace& face, const csgParts& solid) {
    if (face.height() >= thin)
        return false;
    bool inside = false;
    bool outside = false;
    const csgVector centre = face.centre();
    const auto look = [&](const csgVector& towards) {
        const csgStatus found = castRay(towards * 0.9 + centre * 0.1, face.normal, solid);
        inside = inside || found == csgStatus::inside;
        outside = outside || found == csgStatus::outside;
    };
    look(centre);
    for (std::size_t i = 0; i < 3; ++i) {
        look(face.cornerPosition(i));
        look((face.cornerPosition(i) + face.cornerPosition((i + 1) % 3)) * 0.5);
    }
    return inside && outside;
}
