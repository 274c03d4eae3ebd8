#include "csg/solid/csg_splitter.h"

#include "csg/solid/csg_line.h"
#include "csg/solid/csg_mesh.h"
#include "csg/solid/csg_predicates.h"
#include "csg/solid/csg_segment.h"

#include <algorithm>

namespace {

/// Candidates with a common box.
constexpr std::size_t groupLength = 8;
/// How far beyond the mesh's own box candidates are gathered at once, and how far a face may reach before they are
/// gathered anew (world units): cut points stray from their face by rounding only.
constexpr double gatherMargin = 1e-3;
constexpr double strayMargin = 1e-4;
/// In place of the index of a cut.
constexpr std::size_t none = static_cast<std::size_t>(-1);

} // namespace

void csgSplitter::run() {
    if (!mesh.bounds || !other.bounds || !overlaps(*mesh.bounds, *other.bounds))
        return;
    gatherAround(*mesh.bounds);
    for (csgFaceList& part : mesh.parts)
        splitPart(part);
}

void csgSplitter::gatherAround(const csgBounds& box) {
    gatheredBox = box.grown(gatherMargin);
    candidates.clear();
    groups.clear();
    for (const csgFaceList& part : other.parts) {
        part.forEachMeeting(gatheredBox, [&](std::size_t i) { candidates.push_back({part[i]->bounds, part[i]}); });
    }
    for (std::size_t begin = 0; begin < candidates.size(); begin += groupLength) {
        const std::size_t end = std::min(begin + groupLength, candidates.size());
        Group group{candidates[begin].box, begin, end};
        for (std::size_t i = begin + 1; i < end; ++i)
            group.box.merge(candidates[i].box);
        groups.push_back(group);
    }
}

std::size_t csgSplitter::countCutters(const csgBounds& box) const {
    return static_cast<std::size_t>(
        std::count_if(candidates.begin(), candidates.end(),
                      [&](const Candidate& candidate) { return overlaps(box, candidate.box); }));
}

bool csgSplitter::hasCutEnough(std::size_t lastCut, const csgFace& cutter) const {
    int count = 0;
    for (std::size_t i = lastCut; i != none; i = cuts[i].before)
        count += cuts[i].cutter == &cutter ? 1 : 0;
    return count >= csgMostCutsByOne;
}

void csgSplitter::splitPart(csgFaceList& list) {
    std::vector<std::size_t> near;
    list.forEachMeeting(*other.bounds, [&](std::size_t i) { near.push_back(i); });
    cuts.clear();
    families.clear();
    lastCuts.clear();
    firstAppended = list.size();
    std::size_t next = firstAppended;
    for (const std::size_t index : near)
        next = std::max(next, splitFace(list, index));
    while (next < list.size())
        next = overlaps(list[next]->bounds, *other.bounds) ? splitFace(list, next) : next + 1;
    list.compact();
}

/// Returns the index to go on with: usually the next one; a piece that only reproduced its face is dealt with here,
/// too.
std::size_t csgSplitter::splitFace(csgFaceList& list, std::size_t index) {
    if (!gatheredBox.contains(list[index]->bounds.grown(strayMargin))) {
        csgBounds wider = gatheredBox;
        wider.merge(list[index]->bounds);
        gatherAround(wider);
    }
    for (const Group& group : groups) {
        if (!overlaps(list[index]->bounds, group.box))
            continue;
        for (std::size_t i = group.begin; i < group.end; ++i) {
            if (!overlaps(list[index]->bounds, candidates[i].box))
                continue;
            if (splitBy(list, index, *candidates[i].face) == Verdict::done)
                return index + 1;
        }
    }
    return index + 1;
}

/// Cuts the face at `index` where the cutter crosses it.
csgSplitter::Verdict csgSplitter::splitBy(csgFaceList& list, std::size_t& index, const csgFace& cutter) {
    const csgFace& face = *list[index];
    const std::array<int, 3> faceSigns = cornerSigns(face, cutter);
    if (allEqual(faceSigns))
        return Verdict::goOn;
    const std::array<int, 3> cutterSigns = cornerSigns(cutter, face);
    if (allEqual(cutterSigns))
        return Verdict::goOn;
    const csgLine line(face, cutter);
    const csgSegment s(line, face, faceSigns[0], faceSigns[1], faceSigns[2]);
    const csgSegment t(line, cutter, cutterSigns[0], cutterSigns[1], cutterSigns[2]);
    return overlaps(s, t) ? cut(list, index, cutter, s, t) : Verdict::goOn;
}

void csgSplitter::keepUncut(csgFace& face) {
    face.partlyCut = true;
    ++mesh.stats.keptUncut;
}

/// Cuts the face at `index` along the overlap, or not. Done when the face is gone or shall stay; `index` follows a face
/// that was reproduced.
csgSplitter::Verdict csgSplitter::cut(csgFaceList& list, std::size_t& index, const csgFace& cutter, const csgSegment& s,
                                      const csgSegment& t) {
    csgFace& face = *list[index];
    const std::size_t lastCut = index < firstAppended ? none : lastCuts[index - firstAppended];
    if (hasCutEnough(lastCut, cutter)) {
        keepUncut(face);
        return Verdict::goOn;
    }
    if (lastCut != none && families[cuts[lastCut].family].cuts >= families[cuts[lastCut].family].allowed) {
        keepUncut(face);
        return Verdict::done;
    }
    const std::size_t sizeBefore = list.size();
    const csgBounds box = face.bounds;
    const double area = face.area();
    const csgMesh::Pieces pieces = mesh.appendPieces(list, face, s, t);
    if (pieces.made == 0) {
        // All too small, or no pattern fits; a cut along an edge of the face leaves nothing undone.
        face.partlyCut = face.partlyCut || pieces.wanted > 0 || s.middleType == csgSegmentType::inFace;
        return Verdict::goOn;
    }
    double covered = 0.0;
    for (std::size_t i = sizeBefore; i < list.size(); ++i) {
        covered += list[i]->area();
        list[i]->partlyCut = face.partlyCut || pieces.made < pieces.wanted;
    }
    const bool overlaid = covered > area * csgOverlaid;
    if (overlaid && lastCut != none && cuts[lastCut].overlaid >= csgMostOverlaid) {
        while (list.size() > sizeBefore)
            list.removeAt(list.size() - 1);
        keepUncut(face);
        return Verdict::goOn;
    }
    ++mesh.stats.cuts;
    if (lastCut == none)
        families.push_back({0, csgMostCutsPerCutter * (1 + countCutters(box))});
    const std::size_t family = lastCut == none ? families.size() - 1 : cuts[lastCut].family;
    ++families[family].cuts;
    cuts.push_back({lastCut, &cutter, family, (lastCut == none ? 0 : cuts[lastCut].overlaid) + (overlaid ? 1 : 0)});
    lastCuts.resize(list.size() - firstAppended, cuts.size() - 1);

    if (!face.equals(*list.last())) {
        list.take(index);
        return Verdict::done;
    }
    if (pieces.made == 1 && index + 1 == sizeBefore) {
        // The cut only reproduced the last face: the copy takes its place and the walk goes on with it.
        list.take(index);
        ++index;
        return Verdict::goOn;
    }
    list[index]->partlyCut = list.last()->partlyCut;
    list.removeAt(list.size() - 1);
    lastCuts.pop_back();
    return Verdict::goOn;
}
