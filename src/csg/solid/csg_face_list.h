#pragma once

// The faces of one part of a solid, in an order that matters: splitting, rays and drawing all follow it.
//
// Faces are owned. Along with them the list keeps boxes over runs of neighbouring faces, so that a question about a
// place need not visit the whole list; a run's box may be larger than its faces after single removals. Cost: append is
// constant, removeAt and insertAt linear, take constant, compact linear with a tiny factor. Between take and compact
// the list has empty slots (null); everything else expects none.

#include "csg/solid/csg_bounds.h"
#include "csg/solid/csg_face.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

class csgFaceList {
public:
    /// Consecutive faces [begin, end) and a box that holds them all.
    struct Run {
        std::size_t begin;
        std::size_t end;
        csgBounds box;
    };

    std::size_t size() const { return faces.size(); }
    bool empty() const { return faces.empty(); }
    /// Null only for a slot that take has emptied.
    csgFace* operator[](std::size_t index) const { return faces[index].get(); }
    csgFace* last() const { return faces.back().get(); }
    auto begin() const { return faces.begin(); }
    auto end() const { return faces.end(); }
    const std::vector<Run>& getRuns() const { return runs; }

    void append(std::unique_ptr<csgFace> face);
    /// Takes the face out, closing the gap; the caller owns it.
    std::unique_ptr<csgFace> removeAt(std::size_t index);
    void insertAt(std::size_t index, std::unique_ptr<csgFace> face);
    void clear();

    /// Takes the face out and leaves an empty slot, so that every other index stays valid until compact.
    std::unique_ptr<csgFace> take(std::size_t index);
    /// Drops the empty slots, keeping the order.
    void compact();
    /// Rebuilds all boxes after faces have moved.
    void rebuildRuns();

    /// Calls `visit(index)` in ascending order for every face whose box passes `test`, as long as it returns true.
    /// `test` must pass every box that holds a box it passes.
    template <typename Test, typename Visit>
    void forEachWhere(Test test, Visit visit) const {
        for (std::size_t block = 0; block < blocks.size(); ++block) {
            if (!test(blocks[block]))
                continue;
            const std::size_t lastRun = std::min(runs.size(), (block + 1) * runsPerBlock);
            for (std::size_t run = block * runsPerBlock; run < lastRun; ++run) {
                if (!test(runs[run].box))
                    continue;
                for (std::size_t i = runs[run].begin; i < runs[run].end; ++i) {
                    if (faces[i] && test(faces[i]->bounds) && !visit(i))
                        return;
                }
            }
        }
    }

    /// Calls `visit(index)` in ascending order for every face whose box meets `box`.
    template <typename Visit>
    void forEachMeeting(const csgBounds& box, Visit visit) const {
        forEachWhere([&](const csgBounds& own) { return overlaps(own, box); },
                     [&](std::size_t index) {
                         visit(index);
                         return true;
                     });
    }

private:
    static constexpr std::size_t runsPerBlock = 16;

    void appendToRuns(std::size_t index);
    void rebuildBlocks();
    csgBounds boxOf(std::size_t begin, std::size_t end) const;

    std::vector<std::unique_ptr<csgFace>> faces;
    std::vector<Run> runs;
    std::vector<csgBounds> blocks; ///< boxes over runsPerBlock runs each
};
