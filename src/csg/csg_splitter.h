#pragma once

// One pass of splitting the faces of a mesh along the surface of another one, which stays as it is.
//
// Faces are visited in list order, the pieces of a cut after all others. Only faces whose boxes meet are compared: the
// other mesh's faces near the pass are gathered beforehand, in their order. A cut may drop a piece for its size; what
// is left is then cut again at nearly the same place. Nothing in the geometry ends this, so a face whose forebears have
// lost pieces too often is kept as it is.

#include "csg/csg_bounds.h"
#include "csg/csg_face_list.h"

#include <cstddef>
#include <cstdint>
#include <vector>

class csgMesh;

/// Cuts with a dropped piece, or cuts of any kind, among a face's forebears after which it is cut no further.
inline constexpr std::uint32_t csgMostLossyCuts = 32;
inline constexpr std::uint32_t csgMostCuts = 4096;

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
    /// How a face came about: cuts among its forebears, and those of them that dropped a piece.
    struct History {
        std::uint32_t cuts = 0;
        std::uint32_t lossyCuts = 0;
    };
    enum class Verdict { goOn, done };

    void splitPart(csgFaceList& list);
    std::size_t splitFace(csgFaceList& list, std::size_t index);
    Verdict splitBy(csgFaceList& list, std::size_t& index, const csgFace& cutter);
    void gatherAround(const csgBounds& box);
    History historyOf(std::size_t index) const;

    csgMesh& mesh;
    const csgMesh& other;
    csgBounds gatheredBox;
    std::vector<Candidate> candidates;
    std::vector<Group> groups;
    std::vector<History> histories; ///< of the faces appended during this pass to the current part
    std::size_t firstAppended = 0;
};
