#include "csg/solid/csg_mender.h"

#include "csg/solid/csg_mesh.h"

#include <algorithm>
#include <array>
#include <functional>
#include <limits>
#include <utility>

namespace {

/// Half edges of the longest rim that is followed. Larger: more of an open solid's own openings get a lid; smaller: a
/// piece dropped beside many cuts stays a hole.
constexpr std::size_t longestRim = 48;

bool hasHalfEdge(const csgFace& face, const csgVertex* from, const csgVertex* to) {
    const auto& c = face.corners;
    return (c[0] == from && c[1] == to) || (c[1] == from && c[2] == to) || (c[2] == from && c[0] == to);
}

std::size_t countHalfEdges(const csgVertex* from, const csgVertex* to) {
    return static_cast<std::size_t>(std::count_if(from->faces.begin(), from->faces.end(),
                                                  [&](const csgFace* face) { return hasHalfEdge(*face, from, to); }));
}

csgFace* faceWithHalfEdge(const csgVertex* from, const csgVertex* to) {
    const auto found = std::find_if(from->faces.begin(), from->faces.end(),
                                    [&](const csgFace* face) { return hasHalfEdge(*face, from, to); });
    return found != from->faces.end() ? *found : nullptr;
}

double heightOf(const csgVertex* a, const csgVertex* b, const csgVertex* c) {
    return triangleHeight(a->position, b->position, c->position);
}

bool isFlat(const std::array<csgVertex*, 3>& t) {
    return heightOf(t[0], t[1], t[2]) <= csgNarrowGap;
}

/// Area, and for a flat triangle more: it is taken only where it saves that.
double costOf(csgVertex* a, csgVertex* b, csgVertex* c) {
    constexpr double flat = 1e-3;
    return triangleArea(a->position, b->position, c->position) + (isFlat({a, b, c}) ? flat : 0.0);
}

std::array<csgVertex*, 3> sorted(std::array<csgVertex*, 3> corners) {
    std::sort(corners.begin(), corners.end(), std::less<>());
    return corners;
}

/// How far a vertex may be from an edge (world units) that it was put on by a cut.
constexpr double onEdge = 1e-6;

bool isOn(const csgVector& p, const csgVector& from, const csgVector& to) {
    const csgVector along = to - from;
    const double share = std::clamp((p - from).dot(along) / along.dot(along), 0.0, 1.0);
    return (p - (from + along * share)).length() <= onEdge;
}

} // namespace

void csgMender::rememberFaults() {
    locateFaces();
    findMissing();
    for (const Missing& edge : missing)
        openBefore.insert({edge.from, edge.to});
    missing.clear();
    missingFrom.clear();
    for (const csgFace* face : near) {
        const auto isTwin = [&](const csgFace* other) {
            return other != face && other->hasCorner(face->corners[1]) && other->hasCorner(face->corners[2]);
        };
        const std::vector<csgFace*>& others = face->corners[0]->faces;
        if (std::any_of(others.begin(), others.end(), isTwin))
            doubledBefore.push_back(sorted(face->corners));
    }
}

/// True also for a part of an edge that was open.
bool csgMender::wasOpen(const csgVertex& from, const csgVertex& to) const {
    if (openBefore.contains({&from, &to}))
        return true;
    const csgVector along = to.position - from.position;
    return std::any_of(openBefore.begin(), openBefore.end(), [&](const Edge& edge) {
        const csgVector& start = edge.first->position;
        const csgVector& end = edge.second->position;
        return along.dot(end - start) > 0.0 && isOn(from.position, start, end) && isOn(to.position, start, end);
    });
}

bool csgMender::wasDoubled(const csgFace& face) const {
    return std::find(doubledBefore.begin(), doubledBefore.end(), sorted(face.corners)) != doubledBefore.end();
}

void csgMender::run() {
    dropDoubles();
    findMissing();
    Rim rim;
    for (std::size_t i = 0; i < missing.size(); ++i) {
        if (!missing[i].used && findRim(i, rim))
            close(rim);
    }
    compactParts();
    if (missing.empty())
        return;
    // What was put in may lie on what was there.
    dropDoubles();
    compactParts();
}

void csgMender::compactParts() {
    for (csgFaceList& part : mesh.parts)
        part.compact();
}

void csgMender::locateFaces() {
    near.clear();
    places.clear();
    for (csgFaceList& part : mesh.parts) {
        part.forEachMeeting(where, [&](std::size_t i) {
            near.push_back(part[i]);
            places.add(part, i);
        });
    }
}

/// Leaves `near` with the faces that stay.
void csgMender::dropDoubles() {
    locateFaces();
    for (const csgFace* face : near) {
        if (!places.contains(face))
            continue;
        const auto& [a, b, c] = face->corners;
        const std::vector<csgFace*> others = a->faces;
        for (const csgFace* other : others) {
            if (other == face || !other->hasCorner(b) || !other->hasCorner(c))
                continue;
            if (wasDoubled(*face))
                break;
            const bool cancels = hasHalfEdge(*other, b, a);
            places.take(*other);
            if (cancels) {
                places.take(*face);
                break;
            }
        }
    }
    std::erase_if(near, [this](const csgFace* face) { return !places.contains(face); });
}

void csgMender::findMissing() {
    const auto need = [this](csgVertex* from, csgVertex* to) {
        if (wasOpen(*from, *to))
            return;
        missingFrom[from].push_back(missing.size());
        missing.push_back({from, to, false});
    };
    for (const csgFace* face : near) {
        for (std::size_t i = 0; i < 3; ++i) {
            csgVertex* const a = face->corners[i];
            csgVertex* const b = face->corners[(i + 1) % 3];
            const std::size_t along = countHalfEdges(a, b);
            const std::size_t against = countHalfEdges(b, a);
            // Of several faces with the same half edge the first speaks for all.
            if (along > against && faceWithHalfEdge(a, b) == face) {
                for (std::size_t k = against; k < along; ++k)
                    need(b, a);
            }
        }
    }
}

/// The shortest way round that starts with a missing half edge; its edges are then used.
bool csgMender::findRim(std::size_t first, Rim& rim) {
    struct Step {
        std::size_t edge;
        std::size_t before;
        std::size_t length;
    };
    std::vector<Step> steps{{first, 0, 1}};
    for (std::size_t at = 0; at < steps.size(); ++at) {
        const Step step = steps[at];
        if (missing[step.edge].to == missing[first].from) {
            rim.clear();
            for (std::size_t i = at;; i = steps[i].before) {
                missing[steps[i].edge].used = true;
                rim.push_back(missing[steps[i].edge].from);
                if (i == 0)
                    break;
            }
            std::reverse(rim.begin(), rim.end());
            return rim.size() > 2;
        }
        if (step.length == longestRim)
            continue;
        for (const std::size_t next : missingFrom[missing[step.edge].to]) {
            const bool isKnown = std::any_of(steps.begin(), steps.end(), [&](const Step& s) { return s.edge == next; });
            if (!missing[next].used && !isKnown)
                steps.push_back({next, at, step.length + 1});
        }
    }
    return false;
}

/// Cuts the rim into the triangles that have the smallest area together, none of them flat if that can be.
std::vector<csgMender::Corners> csgMender::triangulate(const Rim& rim) {
    const std::size_t size = rim.size();
    struct Best {
        double cost = 0.0;
        std::size_t peak = 0;
    };
    std::vector<Best> best(size * size);
    for (std::size_t span = 2; span < size; ++span) {
        for (std::size_t from = 0; from + span < size; ++from) {
            const std::size_t to = from + span;
            Best& here = best[from * size + to];
            here.cost = std::numeric_limits<double>::max();
            for (std::size_t peak = from + 1; peak < to; ++peak) {
                const double cost =
                    best[from * size + peak].cost + best[peak * size + to].cost + costOf(rim[from], rim[peak], rim[to]);
                if (cost < here.cost)
                    here = {cost, peak};
            }
        }
    }
    std::vector<Corners> triangles;
    std::vector<std::pair<std::size_t, std::size_t>> sides{{0, size - 1}};
    while (!sides.empty()) {
        const auto [from, to] = sides.back();
        sides.pop_back();
        if (to - from < 2)
            continue;
        const std::size_t peak = best[from * size + to].peak;
        triangles.push_back({rim[from], rim[peak], rim[to]});
        sides.emplace_back(from, peak);
        sides.emplace_back(peak, to);
    }
    return triangles;
}

void csgMender::close(const Rim& rim) {
    std::vector<Corners> triangles = triangulate(rim);
    std::erase_if(triangles, [this](const Corners& t) { return fill(t, csgNarrowGap); });
    // A flat triangle may have to wait for the one beside it.
    while (std::erase_if(triangles, [this](const Corners& t) { return flatten(t); }) > 0) {
    }
    // What is left has nothing to split: a sliver whose normal is not good for much is better than a slit.
    std::erase_if(triangles, [this](const Corners& t) { return fill(t, csgNarrowestSliver); });
}

/// Splits the face along the longest side of a flat triangle where its third corner stands.
bool csgMender::flatten(const Corners& t) {
    const auto length = [&](std::size_t i) { return (t[(i + 1) % 3]->position - t[i]->position).length(); };
    std::size_t longest = length(0) >= length(1) ? 0 : 1;
    longest = length(longest) >= length(2) ? longest : 2;
    return splitAlong(*t[longest], *t[(longest + 1) % 3], *t[(longest + 2) % 3]);
}

/// Gives the face along the half edge the vertex in the middle of it.
bool csgMender::splitAlong(csgVertex& from, csgVertex& to, csgVertex& middle) {
    csgFace* const face = faceWithHalfEdge(&to, &from);
    if (face == nullptr || !places.contains(face))
        return false;
    csgFaceList& list = places.listOf(*face);
    const std::size_t start = face->cornerOf(&to);
    const std::size_t end = (start + 1) % 3;
    const std::size_t top = (start + 2) % 3;
    csgVertex& peak = *face->corners[top];
    if (&middle == &peak || heightOf(&to, &middle, &peak) <= csgNarrowGap ||
        heightOf(&middle, &from, &peak) <= csgNarrowGap)
        return false;
    const csgTexCoord tex = csgMesh::interpolateTexture(*face, middle.position);
    places.append(list, {&to, &middle, &peak}, {face->tex[start], tex, face->tex[top]});
    places.append(list, {&middle, &from, &peak}, {tex, face->tex[end], face->tex[top]});
    places.take(*face);
    return true;
}

/// A face of whatever size, in the part and with the texture of a neighbour; false when it would be that low. A face
/// that stands there already, facing the other way, goes instead.
bool csgMender::fill(const Corners& t, double lowest) {
    if (heightOf(t[0], t[1], t[2]) <= lowest)
        return false;
    csgVertex* const a = t[0];
    csgVertex* const b = t[1];
    csgVertex* const c = t[2];
    const auto facesBack = [&](const csgFace* face) {
        return face->hasCorner(b) && face->hasCorner(c) && hasHalfEdge(*face, b, a);
    };
    const auto back = std::find_if(a->faces.begin(), a->faces.end(), facesBack);
    if (back != a->faces.end() && places.contains(*back)) {
        places.take(**back);
        return true;
    }
    const csgFace* neighbour = faceWithHalfEdge(b, a);
    if (neighbour == nullptr)
        neighbour = faceWithHalfEdge(c, b);
    if (neighbour == nullptr)
        neighbour = faceWithHalfEdge(a, c);
    const bool isKnown = neighbour != nullptr && places.contains(neighbour);
    csgFaceList& list = isKnown ? places.listOf(*neighbour) : mesh.parts.front();
    const auto texOf = [&](const csgVertex* v) {
        if (!isKnown)
            return csgTexCoord{};
        // So thin that any of the neighbour's will do where it does not have the corner.
        return neighbour->tex[neighbour->hasCorner(v) ? neighbour->cornerOf(v) : 0];
    };
    places.append(list, t, {texOf(a), texOf(b), texOf(c)});
    ++mesh.stats.mended;
    return true;
}
