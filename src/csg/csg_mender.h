#pragma once

// Closes the gaps that a carve leaves where it drops pieces for their area.
//
// Splitting drops pieces of at most 1e-5, and a face too thin to be cut goes as a whole; each leaves a gap as thin as
// itself. An edge that no longer has a face on its other side lies on the rim of such a gap. The rims are followed
// round and filled with triangles between the vertices that are there, of whatever area: only here do faces of less
// than 1e-5 come into a mesh, and nothing moves. Where the rim of a gap is one straight line, a vertex of one face
// standing on an edge of another, the edge is split there instead. Two faces with the same corners are one too many, or
// cancel each other. A rim too long to follow (an open solid's own, say) stays, and so does a gap beside which there is
// nothing to split: it is narrower than csgNarrowGap.

#include "csg/csg_bounds.h"
#include "csg/csg_tex_coord.h"

#include <array>
#include <cstddef>
#include <unordered_map>
#include <vector>

class csgFace;
class csgFaceList;
class csgMesh;
class csgVertex;

/// A gap narrower than this (world units) is closed by splitting the edge along it. Larger: edges bend where a sliver
/// would do; smaller: the normals of slivers are rounding errors.
inline constexpr double csgNarrowGap = 3e-7;
/// How far beyond the box of what was cut out (world units) faces are looked at, for gaps that lie across its sides.
inline constexpr double csgMendReach = 2.0;

class csgMender {
public:
    /// `carved`: the box of what was cut out.
    csgMender(csgMesh& mendedMesh, const csgBounds& carved) : mesh(mendedMesh), where(carved.grown(csgMendReach)) {}

    void run();

private:
    /// A half edge that no face has, though one has its opposite.
    struct Missing {
        csgVertex* from;
        csgVertex* to;
        bool used;
    };
    struct Place {
        csgFaceList* list;
        std::size_t index;
    };
    using Rim = std::vector<csgVertex*>;
    using Corners = std::array<csgVertex*, 3>;

    void locateFaces();
    void compactParts();
    void dropDoubles();
    void findMissing();
    bool findRim(std::size_t first, Rim& rim);
    static std::vector<Corners> triangulate(const Rim& rim);
    void close(const Rim& rim);
    bool flatten(const Corners& t);
    bool splitAlong(csgVertex& from, csgVertex& to, csgVertex& middle);
    bool fill(const Corners& t);
    void append(csgFaceList& list, const Corners& corners, const std::array<csgTexCoord, 3>& tex);
    void remove(const csgFace& face);

    csgMesh& mesh;
    const csgBounds where; ///< what is looked at
    std::vector<csgFace*> near;
    std::unordered_map<const csgFace*, Place> places;
    std::vector<Missing> missing;
    std::unordered_map<const csgVertex*, std::vector<std::size_t>> missingFrom; ///< looked up, never walked
};
