#pragma once

// One pass of splitting the faces of a mesh along the surface of another one, which stays as it is.
//
// Faces are visited in list order, the pieces of a cut after all others. Only faces whose boxes meet are compared: the
// other mesh's faces near the pass are gathered beforehand, in their order. A cut may drop a piece for its size, and
// what is left is cut again by the same face at nearly the same place; or a cut point falls in with a vertex beside a
// sliver, and the pieces lie over one another. Nothing in the geometry ends either. So each piece knows the cuts that
// made it, and a face that has cut it often enough cuts it no more: what that leaves undone is as thin as what the
// earlier cuts dropped. The other cuts go on. Honest cuts of a large face under a fine tool are many; what a face and
// its pieces share is therefore only a bound far above them, for time alone.

#include "csg/solid/csg_bounds.h"
#include "csg/solid/csg_face_list.h"

#include <cstddef>
#include <vector>

class csgMesh;
class csgSegment;

/// Cuts of a piece and of what it was cut from by one face of the other mesh. Ordinary splitting needs one, two where a
/// cut ends inside. Larger: a runaway costs more before it ends, as it doubles with each; smaller: a face stays uncut
/// where a first piece was dropped.
inline constexpr int csgMostCutsByOne = 4;
/// Cuts of a face and all its pieces together, for each face of the other mesh whose box meets the face's box. Ordinary
/// splitting needs fewer than two.
inline constexpr std::size_t csgMostCutsPerCutter = 16;

/// A cut whose pieces cover more than their face by this factor: a cut point fell in with a vertex beside a sliver, and
/// pieces lie over one another.
inline constexpr double csgOverlaid = 1.05;
/// Cuts of that kind that a piece may come from; the next one is taken back. Larger: such pieces breed by the million;
/// smaller: more of the cuts that only a rounding error made so are undone.
inline constexpr int csgMostOverlaid = 1;

class csgSplitter {
public:
    csgSplitter(csgMesh& splitMesh, const csgMesh& otherMesh) : mesh(splitMesh), other(otherMesh) {}

    void run();

private:
    /// A face of the other mesh, its box beside it: most candidates are dismissed by their box.
    struct Candidate {
        csgBounds box;
        const csgFace* face;
    };
    struct Group {
        csgBounds box;
        std::size_t begin;
        std::size_t end;
    };
    /// One of the cuts that made a piece.
    struct Cut {
        std::size_t before; ///< index of the cut before it in `cuts`, or none
        const csgFace* cutter;
        std::size_t family; ///< index in `families`: of the face of before the pass that all began with
        int overlaid;       ///< how many of the cuts up to this one were
    };
    struct Family {
        std::size_t cuts;
        std::size_t allowed;
    };
    enum class Verdict { goOn, done };

    void splitPart(csgFaceList& list);
    std::size_t splitFace(csgFaceList& list, std::size_t index);
    Verdict splitBy(csgFaceList& list, std::size_t& index, const csgFace& cutter);
    void gatherAround(const csgBounds& box);
    std::size_t countCutters(const csgBounds& box) const;
    Verdict cut(csgFaceList& list, std::size_t& index, const csgFace& cutter, const csgSegment& s, const csgSegment& t);
    void keepUncut(csgFace& face);
    bool hasCutEnough(std::size_t lastCut, const csgFace& cutter) const;

    csgMesh& mesh;
    const csgMesh& other;
    csgBounds gatheredBox;
    std::vector<Candidate> candidates;
    std::vector<Group> groups;
    std::vector<Cut> cuts;             ///< of the current part
    std::vector<Family> families;      ///< of the current part
    std::vector<std::size_t> lastCuts; ///< of the faces appended to the current part: indices into `cuts`
    std::size_t firstAppended = 0;
};
