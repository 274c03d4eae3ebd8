#include "csg/csg_splitter.h"

#include "csg/csg_line.h"
#include "csg/csg_mesh.h"
#include "csg/csg_predicates.h"
#include "csg/csg_segment.h"

#include <algorithm>

namespace {

/// Candidates with a common box.
constexpr std::size_t groupLength = 8;
/// How far beyond the mesh's own box candidates are gathered at once, and how far a face may reach before they are
/// gathered anew (world units): cut points stray from their face by rounding only.
constexpr double gatherMargin = 1e-3;
constexpr double strayMargin = 1e-4;

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

/// Where the cuts of the face at `index` are counted.
std::size_t csgSplitter::originOf(const csgFaceList& list, std::size_t index) {
    if (index >= firstAppended)
        return origins[index - firstAppended];
    if (cuts.empty() || lastOriginal != index) {
        lastOriginal = index;
        cuts.push_back({csgMostCutsPerCutter * (1 + countCutters(list[index]->bounds))});
    }
    return cuts.size() - 1;
}

void csgSplitter::splitPart(csgFaceList& list) {
    std::vector<std::size_t> near;
    list.forEachMeeting(*other.bounds, [&](std::size_t i) { near.push_back(i); });
    cuts.clear();
    origins.clear();
    firstAppended = list.size();
    std::size_t next = firstAppended;
    for (const std::size_t index : near)
        next = std::max(next, splitFace(list, index));
    while (next < list.size())
        next = overlaps(list[next]->bounds, *other.bounds) ? splitFace(list, next) : next + 1;
    list.compact();
}

std::size_t csgSplitter::countCutters(const csgBounds& box) const {
    return static_cast<std::size_t>(
        std::count_if(candidates.begin(), candidates.end(),
                      [&](const Candidate& candidate) { return overlaps(box, candidate.box); }));
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

/// Cuts the face at `index`, or not. Done when the face is gone or shall stay; `index` follows a face that was
/// reproduced.
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
    if (!overlaps(s, t))
        return Verdict::goOn;

    const std::size_t origin = originOf(list, index);
    if (cuts[origin].all >= cuts[origin].allowed || cuts[origin].lossy >= csgMostLossyCuts) {
        ++mesh.stats.keptUncut;
        return Verdict::done;
    }
    const std::size_t sizeBefore = list.size();
    std::size_t wanted = 0;
    const std::size_t made = mesh.appendPieces(list, face, s, t, wanted);
    if (made == 0)
        return Verdict::goOn;
    ++cuts[origin].all;
    cuts[origin].lossy += made < wanted ? 1U : 0U;
    origins.resize(list.size() - firstAppended, origin);

    if (!face.equals(*list.last())) {
        list.take(index);
        return Verdict::done;
    }
    if (made == 1 && index + 1 == sizeBefore) {
        // The cut only reproduced the last face: the copy takes its place and the walk goes on with it.
        list.take(index);
        ++index;
        return Verdict::goOn;
    }
    list.removeAt(list.size() - 1);
    origins.pop_back();
    return Verdict::goOn;
}
