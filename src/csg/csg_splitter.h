#pragma once

// One pass of splitting the faces of a mesh along the surface of another one, which stays as it is.
//
// Faces are visited in list order, the pieces of a cut after all others. Only faces whose boxes meet are compared: the
// other mesh's faces near the pass are gathered beforehand, in their order. A cut may drop a piece for its size, and
// what is left is cut again at nearly the same place; or a cut point falls in with a vertex beside a sliver, and the
// pieces cover more than the face did. Nothing in the geometry ends either, so the cuts of a face and of all its pieces
// together are counted, and beyond a bound the pieces stay as they are.

#include "csg/csg_bounds.h"
#include "csg/csg_face_list.h"

#include <cstddef>
#include <cstdint>
#include <vector>

class csgMesh;

/// Cuts with a dropped piece that a face and its pieces together may suffer. Larger: a runaway costs more before it
/// ends; smaller: a large face under a fine tool stays uncut in places.
inline constexpr std::uint32_t csgMostLossyCuts = 32;
/// Cuts of any kind, for each face of the other mesh whose box meets the face's box; ordinary splitting needs fewer
/// than two.
inline constexpr std::size_t csgMostCutsPerCutter = 4;

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
    /// What has been done to one face of before the pass and to its pieces.
    struct Cuts {
        std::size_t allowed = 0;
        std::size_t all = 0;
        std::uint32_t lossy = 0;
    };
    enum class Verdict { goOn, done };

    void splitPart(csgFaceList& list);
    std::size_t splitFace(csgFaceList& list, std::size_t index);
    Verdict splitBy(csgFaceList& list, std::size_t& index, const csgFace& cutter);
    void gatherAround(const csgBounds& box);
    std::size_t originOf(const csgFaceList& list, std::size_t index);
    std::size_t countCutters(const csgBounds& box) const;

    csgMesh& mesh;
    const csgMesh& other;
    csgBounds gatheredBox;
    std::vector<Candidate> candidates;
    std::vector<Group> groups;
    std::vector<Cuts> cuts;           ///< one for each face of the current part that was cut
    std::vector<std::size_t> origins; ///< of the faces appended to the current part: whose pieces they are, in `cuts`
    std::size_t lastOriginal = 0;     ///< index of the face that the newest of `cuts` belongs to
    std::size_t firstAppended = 0;
};
