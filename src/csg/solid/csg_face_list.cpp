#include "csg/solid/csg_face_list.h"

#include "core/base/expect.h"

#include <utility>

namespace {

/// Faces per run. Larger: more faces are tested in vain; smaller: more boxes are.
constexpr std::size_t runLength = 8;

} // namespace

void csgFaceList::append(std::unique_ptr<csgFace> face) {
    expect(face != nullptr);
    faces.push_back(std::move(face));
    appendToRuns(faces.size() - 1);
}

void csgFaceList::appendToRuns(std::size_t index) {
    const csgBounds& box = faces[index]->bounds;
    if (!runs.empty() && runs.back().end - runs.back().begin < runLength) {
        runs.back().end = index + 1;
        runs.back().box.merge(box);
        blocks.back().merge(box);
        return;
    }
    if (runs.size() % runsPerBlock == 0)
        blocks.push_back(box);
    else
        blocks.back().merge(box);
    runs.push_back({index, index + 1, box});
}

void csgFaceList::rebuildBlocks() {
    blocks.clear();
    for (std::size_t i = 0; i < runs.size(); ++i) {
        if (i % runsPerBlock == 0)
            blocks.push_back(runs[i].box);
        else
            blocks.back().merge(runs[i].box);
    }
}

std::unique_ptr<csgFace> csgFaceList::removeAt(std::size_t index) {
    expect(index < faces.size());
    std::unique_ptr<csgFace> face = std::move(faces[index]);
    faces.erase(faces.begin() + static_cast<std::ptrdiff_t>(index));
    for (Run& run : runs) {
        run.begin -= run.begin > index ? 1U : 0U;
        run.end -= run.end > index ? 1U : 0U;
    }
    std::erase_if(runs, [](const Run& run) { return run.begin == run.end; });
    rebuildBlocks();
    return face;
}

void csgFaceList::insertAt(std::size_t index, std::unique_ptr<csgFace> face) {
    expect(face != nullptr && index <= faces.size());
    if (index == faces.size()) {
        append(std::move(face));
        return;
    }
    for (Run& run : runs) {
        if (run.begin <= index && index < run.end)
            run.box.merge(face->bounds);
        run.begin += run.begin > index ? 1U : 0U;
        run.end += run.end > index ? 1U : 0U;
    }
    faces.insert(faces.begin() + static_cast<std::ptrdiff_t>(index), std::move(face));
    rebuildBlocks();
}

void csgFaceList::clear() {
    faces.clear();
    runs.clear();
    blocks.clear();
}

std::unique_ptr<csgFace> csgFaceList::take(std::size_t index) {
    expect(index < faces.size() && faces[index] != nullptr);
    return std::move(faces[index]);
}

void csgFaceList::compact() {
    std::size_t kept = 0;
    std::size_t keptRuns = 0;
    for (Run run : runs) {
        const std::size_t begin = kept;
        const std::size_t before = run.end - run.begin;
        for (std::size_t i = run.begin; i < run.end; ++i) {
            if (!faces[i])
                continue;
            if (kept != i)
                faces[kept] = std::move(faces[i]);
            ++kept;
        }
        const std::size_t length = kept - begin;
        if (length == 0)
            continue;
        if (length != before)
            run.box = boxOf(begin, kept);
        if (keptRuns > 0 && kept - runs[keptRuns - 1].begin <= runLength) {
            runs[keptRuns - 1].end = kept;
            runs[keptRuns - 1].box.merge(run.box);
        } else {
            runs[keptRuns++] = {begin, kept, run.box};
        }
    }
    faces.resize(kept);
    runs.resize(keptRuns);
    rebuildBlocks();
}

void csgFaceList::rebuildRuns() {
    runs.clear();
    blocks.clear();
    for (std::size_t i = 0; i < faces.size(); ++i)
        appendToRuns(i);
}

csgBounds csgFaceList::boxOf(std::size_t begin, std::size_t end) const {
    expect(begin < end && end <= faces.size());
    csgBounds box = faces[begin]->bounds;
    for (std::size_t i = begin + 1; i < end; ++i)
        box.merge(faces[i]->bounds);
    return box;
}
