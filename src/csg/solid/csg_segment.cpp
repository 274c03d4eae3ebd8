#include "csg/solid/csg_segment.h"

#include "core/base/expect.h"
#include "csg/solid/csg_face.h"
#include "csg/solid/csg_line.h"
#include "csg/solid/csg_vertex.h"

#include <array>
#include <utility>

csgSegment::csgSegment(const csgLine& onLine, const csgFace& face, int s0, int s1, int s2) : line(&onLine) {
    expect(s0 * s0 <= 1 && s1 * s1 <= 1 && s2 * s2 <= 1);
    const std::array<int, 3> signs{s0, s1, s2};
    for (std::size_t i = 0; i < 3; ++i) {
        if (signs[i] != 0)
            continue;
        setVertexEnd(face.corners[i]);
        // The plane touches the face in this corner alone: both ends are there.
        if (signs[(i + 1) % 3] == signs[(i + 2) % 3])
            setVertexEnd(face.corners[i]);
    }
    for (std::size_t i = 0; i < 3 && endCount < 2; ++i) {
        const std::size_t next = (i + 1) % 3;
        if (signs[i] * signs[next] == -1)
            setEdgeEnd(face.corners[i], face.corners[next]);
    }
}

void csgSegment::swapEnds() {
    std::swap(start, end);
}

csgSegment::End* csgSegment::nextEnd() {
    if (endCount == 0)
        return &start;
    return endCount == 1 ? &end : nullptr;
}

void csgSegment::finishEnd() {
    ++endCount;
    if (endCount == 2 && start.distance > end.distance)
        swapEnds();
}

void csgSegment::setVertexEnd(csgVertex* corner) {
    End* target = nextEnd();
    if (target == nullptr)
        return;
    *target = {line->signedDistance(corner->position), csgSegmentType::corner, corner, corner->position};
    if (endCount == 1) {
        if (start.vertex->equals(*end.vertex))
            middleType = csgSegmentType::corner;
        else if (start.type == csgSegmentType::corner)
            middleType = csgSegmentType::edge;
    }
    finishEnd();
}

void csgSegment::setEdgeEnd(csgVertex* first, csgVertex* second) {
    End* target = nextEnd();
    if (target == nullptr)
        return;
    const csgLine edge(second->position - first->position, first->position);
    const csgVector crossing = line->intersect(edge);
    *target = {line->signedDistance(crossing), csgSegmentType::edge, first, crossing};
    middleType = csgSegmentType::inFace;
    finishEnd();
}

bool overlaps(const csgSegment& s, const csgSegment& t) {
    return !(t.start.distance + csgGeometricTolerance > s.end.distance ||
             s.start.distance + csgGeometricTolerance > t.end.distance);
}
