#include "support/plain_boolean.h"

#include "csg/solid/csg_classify.h"
#include "csg/solid/csg_divider.h"
#include "csg/solid/csg_joiner.h"
#include "csg/solid/csg_line.h"
#include "csg/solid/csg_mender.h"
#include "csg/solid/csg_mesh.h"
#include "csg/solid/csg_predicates.h"
#include "csg/solid/csg_segment.h"
#include "csg/solid/csg_splitter.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace {

/// The faces that cut a piece and what it was cut from, and how often the first face and all its pieces were cut.
struct Origin {
    std::vector<const csgFace*> cutters;
    std::shared_ptr<std::size_t> left;
    int overlaid = 0;
};
using Origins = std::map<const csgFace*, Origin>;

template <typename Visit>
void forEachFace(const csgMesh& mesh, Visit visit) {
    for (const csgFaceList& part : mesh.getParts()) {
        for (const auto& face : part)
            visit(*face);
    }
}

std::size_t countMeeting(const csgMesh& mesh, const csgBounds& box) {
    std::size_t count = 0;
    forEachFace(mesh, [&](const csgFace& face) { count += overlaps(box, face.bounds) ? 1U : 0U; });
    return count;
}

enum class Step { nextCutter, nextFace, sameIndex };

Step splitBy(csgMesh& mesh, csgFaceList& list, std::size_t index, const csgFace& cutter, const csgMesh& other,
             Origins& origins) {
    csgFace& face = *list[index];
    if (!overlaps(face.bounds, cutter.bounds))
        return Step::nextCutter;
    const auto signs = cornerSigns(face, cutter);
    const auto cutterSigns = cornerSigns(cutter, face);
    if (allEqual(signs) || allEqual(cutterSigns))
        return Step::nextCutter;
    const csgLine line(face, cutter);
    const csgSegment s(line, face, signs[0], signs[1], signs[2]);
    const csgSegment t(line, cutter, cutterSigns[0], cutterSigns[1], cutterSigns[2]);
    if (!overlaps(s, t))
        return Step::nextCutter;

    Origin origin = origins[&face];
    // Whatever stays undone from here on leaves the face on both sides, but for a cut along one of its edges.
    const bool wasPartlyCut = std::exchange(face.partlyCut, true);
    if (std::count(origin.cutters.begin(), origin.cutters.end(), &cutter) >= csgMostCutsByOne)
        return Step::nextCutter;
    if (origin.left && *origin.left == 0)
        return Step::nextFace;
    if (!origin.left)
        origin.left = std::make_shared<std::size_t>(csgMostCutsPerCutter * (1 + countMeeting(other, face.bounds)));
    origin.cutters.push_back(&cutter);
    const std::size_t before = list.size();
    const auto [made, wanted] = mesh.appendPieces(list, face, s, t);
    if (made == 0) {
        face.partlyCut = wasPartlyCut || wanted > 0 || s.middleType == csgSegmentType::inFace;
        return Step::nextCutter;
    }
    double covered = 0.0;
    for (std::size_t i = before; i < list.size(); ++i)
        covered += list[i]->area();
    const bool overlaid = covered > csgOverlaid * face.area();
    if (overlaid && origin.overlaid >= csgMostOverlaid) {
        while (list.size() > before)
            csgMesh::removeFaceAt(list, list.size() - 1);
        return Step::nextCutter;
    }
    origin.overlaid += overlaid ? 1 : 0;
    for (std::size_t i = before; i < list.size(); ++i) {
        origins[list[i]] = origin;
        list[i]->partlyCut = wasPartlyCut || made < wanted;
    }
    --*origin.left;

    std::unique_ptr<csgFace> removed = csgMesh::removeFaceAt(list, index);
    if (!removed->equals(*list.last())) {
        origins.erase(removed.get());
        return Step::sameIndex;
    }
    if (index + 1 == list.size()) {
        origins.erase(removed.get());
        return Step::nextCutter;
    }
    removed->partlyCut = list.last()->partlyCut;
    list.insertAt(index, std::move(removed));
    origins.erase(list.last());
    csgMesh::removeFaceAt(list, list.size() - 1);
    return Step::nextCutter;
}

Step splitFace(csgMesh& mesh, csgFaceList& list, std::size_t index, const csgMesh& other, Origins& origins) {
    for (const csgFaceList& part : other.getParts()) {
        for (const auto& cutter : part) {
            const Step step = splitBy(mesh, list, index, *cutter, other, origins);
            if (step != Step::nextCutter)
                return step;
        }
    }
    return Step::nextFace;
}

csgStatus resultOf(const csgFace* closest, double distance, const csgLine& ray) {
    if (closest == nullptr)
        return csgStatus::outside;
    const double dot = closest->normal.dot(ray.direction);
    const bool onFace = std::fabs(distance) < csgGeometricTolerance;
    if (dot > csgGeometricTolerance)
        return onFace ? csgStatus::coplanarSame : csgStatus::inside;
    if (dot < -csgGeometricTolerance)
        return onFace ? csgStatus::coplanarOpposite : csgStatus::outside;
    return csgStatus::unclassified;
}

void spread(csgVertex& from, csgStatus status) {
    if (from.status != csgStatus::unclassified || status == csgStatus::unclassified)
        return;
    from.status = status;
    for (csgVertex* next : from.adjacent)
        spread(*next, status);
}

bool confirms(const csgFace& face, csgStatus own, const csgMesh& other) {
    const auto isCoplanar = [](csgStatus status) { return status >= csgStatus::coplanarSame; };
    for (const csgVector& direction :
         {csgVector{0.3141592, 0.8577215, 0.4069173}, csgVector{-0.7320508, 0.2718281, -0.6247137}}) {
        const csgStatus found = plainRay(face.centre(), direction, other);
        if (found != own && !(isCoplanar(found) && isCoplanar(own)))
            return false;
    }
    return true;
}

} // namespace

csgStatus plainRay(const csgVector& point, const csgVector& direction, const csgMesh& solid) {
    csgLine ray(direction, point);
    const csgFace* closest = nullptr;
    double closestDistance = 0.0;
    for (bool repeat = true; repeat;) {
        repeat = false;
        closestDistance = static_cast<double>(3.4e38f);
        for (const csgFaceList& part : solid.getParts()) {
            for (const auto& face : part) {
                const double dot = face->normal.dot(ray.direction);
                const csgVector hit = ray.intersectPlane(*face);
                if (hit == csgVector{})
                    continue;
                const double distance = ray.signedDistance(hit);
                const bool atStart = std::fabs(distance) < csgGeometricTolerance;
                if (atStart && std::fabs(dot) < csgGeometricTolerance) {
                    ray.perturbDirection();
                    repeat = true;
                    break;
                }
                if (atStart && std::fabs(dot) > csgGeometricTolerance) {
                    if (contains(*face, hit)) {
                        closest = face.get();
                        closestDistance = 0.0;
                        break;
                    }
                } else if (std::fabs(dot) > csgGeometricTolerance && distance > csgGeometricTolerance &&
                           distance < closestDistance && contains(*face, hit)) {
                    closest = face.get();
                    closestDistance = distance;
                }
            }
        }
    }
    return resultOf(closest, closestDistance, ray);
}

void plainSplit(csgMesh& mesh, const csgMesh& other) {
    if (!overlaps(*mesh.getBounds(), *other.getBounds()))
        return;
    for (std::size_t p = 0; p < mesh.getParts().size(); ++p) {
        csgFaceList& list = mesh.getPart(p);
        Origins origins;
        for (std::size_t index = 0; index < list.size();) {
            Step step = Step::nextFace;
            if (overlaps(list[index]->bounds, *other.getBounds()))
                step = splitFace(mesh, list, index, other, origins);
            if (step == Step::nextFace)
                ++index;
        }
    }
}

void plainClassify(csgMesh& mesh, const csgMesh& other) {
    forEachFace(mesh, [](csgFace& face) {
        for (csgVertex* a : face.corners) {
            for (csgVertex* b : face.corners) {
                if (a != b)
                    a->addAdjacent(b);
            }
        }
    });
    const auto isFar = [&](const csgFace& face) { return !overlaps(face.bounds, *other.getBounds()); };
    forEachFace(mesh, [&](csgFace& face) {
        if (!isFar(face))
            return;
        face.status = csgStatus::outside;
        for (csgVertex* corner : face.corners)
            spread(*corner, csgStatus::outside);
    });
    const auto settledCorner = [](const csgFace& face) -> const csgVertex* {
        for (const csgVertex* corner : face.corners) {
            if (corner->status == csgStatus::inside || corner->status == csgStatus::outside)
                return corner;
        }
        return nullptr;
    };
    std::map<const csgFace*, bool> flooded;
    forEachFace(mesh, [&](csgFace& face) {
        if (isFar(face))
            return;
        if (const csgVertex* settled = settledCorner(face)) {
            face.status = settled->status;
            flooded[&face] = true;
            return;
        }
        const csgStatus own = plainRay(face.centre(), face.normal, other);
        if (own != csgStatus::unclassified)
            face.status = own;
        for (csgVertex* corner : face.corners)
            spread(*corner, face.status);
    });
    forEachFace(mesh, [&](csgFace& face) {
        if (!flooded.contains(&face))
            return;
        const csgStatus own = plainRay(face.centre(), face.normal, other);
        if (own != csgStatus::unclassified && own != face.status && confirms(face, own, other))
            face.status = own;
    });
    forEachFace(mesh, [&](csgFace& face) {
        if (face.partlyCut && straddles(face, other.getParts()))
            face.status = csgStatus::straddling;
    });
}

void plainCarve(csgMesh& land, csgMesh& tool) {
    csgMender mender(land, *tool.getBounds());
    mender.rememberFaults();
    const csgBounds box = *tool.getBounds();
    csgDivider(land, box).run();
    plainSplit(land, tool);
    plainSplit(tool, land);
    plainSplit(land, tool);
    plainClassify(land, tool);
    plainClassify(tool, land);
    for (std::size_t p = 0; p < land.getParts().size(); ++p) {
        csgFaceList& list = land.getPart(p);
        for (std::size_t index = 0; index < list.size();) {
            const csgStatus status = list[index]->status;
            if (status == csgStatus::inside || status == csgStatus::coplanarSame || status == csgStatus::straddling)
                csgMesh::removeFaceAt(list, index);
            else
                ++index;
        }
    }
    forEachFace(tool, [&](csgFace& face) {
        if (face.status == csgStatus::inside) {
            face.invert();
            land.adoptFace(face);
        }
    });
    mender.run();
    if (land.hasBeenDivided())
        csgJoiner(land, box).run();
    for (const auto& vertex : land.getVertices()) {
        vertex->adjacent.clear();
        vertex->status = csgStatus::unclassified;
    }
    forEachFace(land, [](csgFace& face) {
        face.status = csgStatus::unclassified;
        face.partlyCut = false;
    });
}
