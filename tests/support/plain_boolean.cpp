#include "support/plain_boolean.h"

#include "csg/csg_classify.h"
#include "csg/csg_line.h"
#include "csg/csg_mender.h"
#include "csg/csg_mesh.h"
#include "csg/csg_predicates.h"
#include "csg/csg_segment.h"
#include "csg/csg_splitter.h"

#include <array>
#include <cmath>
#include <map>
#include <memory>

namespace {

/// Cuts of a face and its pieces together.
struct Cuts {
    std::size_t allowed;
    std::size_t all = 0;
    std::uint32_t lossy = 0;
};
using Origins = std::map<const csgFace*, std::shared_ptr<Cuts>>;

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

    std::shared_ptr<Cuts>& cuts = origins[&face];
    if (!cuts)
        cuts = std::make_shared<Cuts>(Cuts{csgMostCutsPerCutter * (1 + countMeeting(other, face.bounds))});
    if (cuts->all >= cuts->allowed || cuts->lossy >= csgMostLossyCuts)
        return Step::nextFace;
    const std::shared_ptr<Cuts> ownCuts = cuts;
    const std::size_t before = list.size();
    std::size_t wanted = 0;
    const std::size_t made = mesh.appendPieces(list, face, s, t, wanted);
    if (made == 0)
        return Step::nextCutter;
    ++ownCuts->all;
    ownCuts->lossy += made < wanted ? 1U : 0U;
    for (std::size_t i = before; i < list.size(); ++i)
        origins[list[i]] = ownCuts;

    std::unique_ptr<csgFace> removed = csgMesh::removeFaceAt(list, index);
    if (!removed->equals(*list.last())) {
        origins.erase(removed.get());
        return Step::sameIndex;
    }
    if (index + 1 == list.size()) {
        origins.erase(removed.get());
        return Step::nextCutter;
    }
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

std::int32_t resultOf(const csgFace* closest, double distance, const csgLine& ray) {
    if (closest == nullptr)
        return csgOutside;
    const double dot = closest->normal.dot(ray.direction);
    const bool onFace = std::fabs(distance) < csgGeometricTolerance;
    if (dot > csgGeometricTolerance)
        return onFace ? csgCoplanarSame : csgInside;
    if (dot < -csgGeometricTolerance)
        return onFace ? csgCoplanarOpposite : csgOutside;
    return csgUnclassified;
}

void spread(csgVertex& from, std::int32_t status) {
    if (from.status != csgUnclassified || status == csgUnclassified)
        return;
    from.status = status;
    for (csgVertex* next : from.adjacent)
        spread(*next, status);
}

bool confirms(const csgFace& face, std::int32_t own, const csgMesh& other) {
    const auto isCoplanar = [](std::int32_t status) { return status >= csgCoplanarSame; };
    for (const csgVector& direction :
         {csgVector{0.3141592, 0.8577215, 0.4069173}, csgVector{-0.7320508, 0.2718281, -0.6247137}}) {
        const std::int32_t found = plainRay(face.centre(), direction, other);
        if (found != own && !(isCoplanar(found) && isCoplanar(own)))
            return false;
    }
    return true;
}

} // namespace

std::int32_t plainRay(const csgVector& point, const csgVector& direction, const csgMesh& solid) {
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
        face.status = csgOutside;
        for (csgVertex* corner : face.corners)
            spread(*corner, csgOutside);
    });
    const auto settledCorner = [](const csgFace& face) -> const csgVertex* {
        for (const csgVertex* corner : face.corners) {
            if (corner->status == csgInside || corner->status == csgOutside)
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
        const std::int32_t own = plainRay(face.centre(), face.normal, other);
        if (own != csgUnclassified)
            face.status = own;
        for (csgVertex* corner : face.corners)
            spread(*corner, face.status);
    });
    forEachFace(mesh, [&](csgFace& face) {
        if (!flooded.contains(&face))
            return;
        const std::int32_t own = plainRay(face.centre(), face.normal, other);
        if (own != csgUnclassified && own != face.status && confirms(face, own, other))
            face.status = own;
    });
    forEachFace(mesh, [&](csgFace& face) {
        if (straddles(face, other.getParts()))
            face.status = csgStraddling;
    });
}

void plainCarve(csgMesh& land, csgMesh& tool) {
    plainSplit(land, tool);
    plainSplit(tool, land);
    plainSplit(land, tool);
    plainClassify(land, tool);
    plainClassify(tool, land);
    for (std::size_t p = 0; p < land.getParts().size(); ++p) {
        csgFaceList& list = land.getPart(p);
        for (std::size_t index = 0; index < list.size();) {
            const std::int32_t status = list[index]->status;
            if (status == csgInside || status == csgCoplanarSame || status == csgStraddling)
                csgMesh::removeFaceAt(list, index);
            else
                ++index;
        }
    }
    forEachFace(tool, [&](csgFace& face) {
        if (face.status == csgInside) {
            face.invert();
            land.adoptFace(face);
        }
    });
    csgMender(land, *tool.getBounds()).run();
    for (const auto& vertex : land.getVertices()) {
        vertex->adjacent.clear();
        vertex->status = csgUnclassified;
    }
    forEachFace(land, [](csgFace& face) { face.status = csgUnclassified; });
}
