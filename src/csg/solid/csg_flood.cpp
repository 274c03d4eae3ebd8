#include "csg/solid/csg_flood.h"

#include "core/base/expect.h"
#include "csg/solid/csg_classify.h"
#include "csg/solid/csg_mesh.h"

#include <algorithm>

std::vector<csgFace*> csgFlood::facesMeeting(const csgMesh& mesh, const csgBounds& box) {
    std::vector<csgFace*> faces;
    for (const csgFaceList& part : mesh.getParts())
        part.forEachMeeting(box, [&](std::size_t i) { faces.push_back(part[i]); });
    return faces;
}

void csgFlood::run() {
    expect(&mesh != &other);
    if (!other.bounds)
        return;
    near = facesMeeting(mesh, *other.bounds);
    linkCorners();
    spreadFromOutside();
    classify();
    verify();
    markStraddlers();
}

void csgFlood::linkCorners() {
    for (csgFace* face : near) {
        const auto& [a, b, c] = face->corners;
        a->addAdjacent(b);
        a->addAdjacent(c);
        b->addAdjacent(a);
        b->addAdjacent(c);
        c->addAdjacent(a);
        c->addAdjacent(b);
    }
}

void csgFlood::spreadFromOutside() {
    const auto isFar = [&](const csgFace* face) { return !overlaps(face->bounds, *other.bounds); };
    for (const csgFace* face : near) {
        for (csgVertex* corner : face->corners) {
            if (corner->status == csgStatus::unclassified &&
                std::any_of(corner->faces.begin(), corner->faces.end(), isFar))
                spread(*corner, csgStatus::outside);
        }
    }
}

void csgFlood::classify() {
    const auto isSettled = [](const csgVertex* v) {
        return v->status == csgStatus::inside || v->status == csgStatus::outside;
    };
    hasOwnRay.assign(near.size(), false);
    for (std::size_t i = 0; i < near.size(); ++i) {
        csgFace& face = *near[i];
        const auto settled = std::find_if(face.corners.begin(), face.corners.end(), isSettled);
        if (settled != face.corners.end()) {
            face.status = (*settled)->status;
            continue;
        }
        classifyByRay(face, other.parts);
        hasOwnRay[i] = true;
        for (csgVertex* corner : face.corners) {
            if (corner->status == csgStatus::unclassified)
                spread(*corner, face.status);
        }
    }
}

void csgFlood::spread(csgVertex& from, csgStatus status) {
    if (status == csgStatus::unclassified)
        return;
    from.status = status;
    pending.assign(1, &from);
    while (!pending.empty()) {
        const csgVertex* vertex = pending.back();
        pending.pop_back();
        for (csgVertex* next : vertex->adjacent) {
            if (next->status != csgStatus::unclassified)
                continue;
            next->status = status;
            pending.push_back(next);
        }
    }
}

void csgFlood::verify() {
    for (std::size_t i = 0; i < near.size(); ++i) {
        if (hasOwnRay[i])
            continue;
        csgFace& face = *near[i];
        const csgStatus own = castOwnRay(face, other.parts);
        if (own == csgStatus::unclassified || own == face.status || !confirmStatus(face, own, other.parts))
            continue;
        face.status = own;
        ++mesh.stats.overruled;
    }
}

void csgFlood::markStraddlers() {
    for (csgFace* face : near) {
        if (face->partlyCut && straddles(*face, other.parts))
            face->status = csgStatus::straddling;
    }
}
