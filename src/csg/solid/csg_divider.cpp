#include "csg/solid/csg_divider.h"

#include "csg/solid/csg_mesh.h"

#include <algorithm>
#include <iterator>

namespace {

/// Edges whose lengths differ by less are equally long: rounding must not send a search for the longest one in a
/// circle.
constexpr double alike = 1e-9;

double edgeLength(const csgFace& face, std::size_t edge) {
    return (face.cornerPosition((edge + 1) % 3) - face.cornerPosition(edge)).length();
}

std::size_t longestEdge(const csgFace& face) {
    std::size_t longest = 0;
    for (std::size_t i = 1; i < 3; ++i)
        longest = edgeLength(face, i) > edgeLength(face, longest) ? i : longest;
    return longest;
}

/// Whether anything of the triangle lies in the box: what six planes leave of it.
bool meets(const csgFace& face, const csgBounds& box) {
    std::vector<csgVector> outline{face.cornerPosition(0), face.cornerPosition(1), face.cornerPosition(2)};
    std::vector<csgVector> kept;
    for (double csgVector::*const axis : {&csgVector::x, &csgVector::y, &csgVector::z}) {
        for (const double sense : {1.0, -1.0}) {
            const double limit = sense > 0.0 ? box.max.*axis : -(box.min.*axis);
            const auto room = [&](const csgVector& p) { return limit - sense * (p.*axis); };
            kept.clear();
            for (std::size_t i = 0; i < outline.size(); ++i) {
                const csgVector& here = outline[i];
                const csgVector& next = outline[(i + 1) % outline.size()];
                const double a = room(here);
                const double b = room(next);
                if (a >= 0.0)
                    kept.push_back(here);
                if ((a > 0.0 && b < 0.0) || (a < 0.0 && b > 0.0))
                    kept.push_back(here + (next - here) * (a / (a - b)));
            }
            outline.swap(kept);
        }
    }
    return !outline.empty();
}

} // namespace

csgDivider::csgDivider(csgMesh& dividedMesh, const csgBounds& tool) : mesh(dividedMesh), where(tool) {
    const csgVector size = tool.max - tool.min;
    longest = csgLongFace * std::max({size.x, size.y, size.z});
}

void csgDivider::run() {
    for (const csgFaceList& part : mesh.getParts()) {
        part.forEachMeeting(where, [&](std::size_t i) {
            if (isTooLong(*part[i]))
                pending.push_back(part[i]);
        });
    }
    if (pending.empty())
        return;
    mesh.divided = true;
    for (csgFaceList& part : mesh.parts) {
        for (std::size_t i = 0; i < part.size(); ++i)
            places.add(part, i);
    }
    while (!pending.empty()) {
        csgFace* const face = pending.back();
        // Halving a neighbour leaves the face for another try.
        if (!places.contains(face) || !halve(*face))
            pending.pop_back();
    }
    for (csgFaceList& part : mesh.parts)
        part.compact();
}

bool csgDivider::isTooLong(const csgFace& face) const {
    return edgeLength(face, longestEdge(face)) > longest && meets(face, where);
}

/// Halves the face, or a neighbour that has to be halved before it. False when there is no room for a vertex.
bool csgDivider::halve(const csgFace& first) {
    // Every step leads to a longer edge, so this ends.
    for (const csgFace* face = &first;;) {
        const std::size_t edge = longestEdge(*face);
        csgVertex& a = *face->corners[edge];
        csgVertex& b = *face->corners[(edge + 1) % 3];
        const double length = edgeLength(*face, edge);
        std::vector<csgFace*> ring;
        std::copy_if(a.faces.begin(), a.faces.end(), std::back_inserter(ring),
                     [&](const csgFace* beside) { return beside->hasCorner(&b) && places.contains(beside); });
        const auto longer = std::find_if(ring.begin(), ring.end(), [&](const csgFace* beside) {
            return edgeLength(*beside, longestEdge(*beside)) > length * (1.0 + alike);
        });
        if (longer == ring.end())
            return splitEdge(a, b, ring);
        face = *longer;
    }
}

bool csgDivider::splitEdge(csgVertex& a, csgVertex& b, const std::vector<csgFace*>& ring) {
    const csgVertex wanted((a.position + b.position) * 0.5);
    // A vertex of somewhere else that happens to stand there belongs to another sheet.
    if (mesh.findVertex(wanted) != nullptr)
        return false;
    csgVertex& middle = mesh.addVertex(wanted);
    for (csgFace* const face : ring) {
        csgFaceList& list = places.listOf(*face);
        std::size_t top = 0;
        while (face->corners[top] == &a || face->corners[top] == &b)
            ++top;
        const std::size_t start = (top + 1) % 3;
        const std::size_t end = (top + 2) % 3;
        const csgTexCoord tex{(face->tex[start].u + face->tex[end].u) / 2, (face->tex[start].v + face->tex[end].v) / 2};
        append(list, {face->corners[top], face->corners[start], &middle}, {face->tex[top], face->tex[start], tex});
        append(list, {face->corners[top], &middle, face->corners[end]}, {face->tex[top], tex, face->tex[end]});
        divided.push_back(places.take(*face));
    }
    return true;
}

void csgDivider::append(csgFaceList& list, const std::array<csgVertex*, 3>& corners,
                        const std::array<csgTexCoord, 3>& tex) {
    csgFace& face = places.append(list, corners, tex);
    if (isTooLong(face))
        pending.push_back(&face);
}
