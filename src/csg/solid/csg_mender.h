#pragma once

// Closes the gaps that a carve leaves where it drops pieces for their area.
//
// Splitting drops pieces of at most 1e-5, and a face too thin to be cut goes as a whole; each leaves a gap as thin as
// itself. An edge that no longer has a face on its other side lies on the rim of such a gap. The rims are followed
// round and filled with triangles between the vertices that are there, of whatever area: only here do faces of less
// than 1e-5 come into a mesh, and nothing moves. Where the rim of a gap is one straight line, a vertex of one face
// standing on an edge of another, the edge is split there instead. Two faces with the same corners are one too many, or
// cancel each other. Beside a straight gap there may be nothing to split, as the face along it is as flat: then it gets
// a sliver after all. A rim too long to follow stays, and so does what is narrower than csgNarrowestSliver.
//
// A solid may come with sheets, vertices on edges and doubled faces of its own. What was so before the carve is none of
// its gaps and is left as it is.

#include "csg/solid/csg_bounds.h"
#include "csg/solid/csg_face_places.h"

#include <array>
#include <cstddef>
#include <set>
#include <unordered_map>
#include <utility>
#include <vector>

class csgFace;
class csgFaceList;
class csgMesh;
class csgVertex;

/// A gap narrower than this (world units) is closed by splitting the edge along it. Larger: edges bend where a sliver
/// would do; smaller: the normals of slivers are rounding errors.
inline constexpr double csgNarrowGap = 3e-7;
/// Where nothing can be split, a gap wider than this gets a sliver even so. Smaller: its normal is a rounding error.
inline constexpr double csgNarrowestSliver = 1e-8;
/// How far beyond the box of what was cut out (world units) faces are looked at, for gaps that lie across its sides.
inline constexpr double csgMendReach = 2.0;

class csgMender {
public:
    /// `carved`: the box of what was cut out.
    csgMender(csgMesh& mendedMesh, const csgBounds& carved) : mesh(mendedMesh), where(carved.grown(csgMendReach)) {}

    /// Before the carve: notes what is open or doubled already.
    void rememberFaults();
    /// After it.
    void run();

private:
    /// A half edge that no face has, though one has its opposite.
    struct Missing {
        csgVertex* from;
        csgVertex* to;
        bool used;
    };
    using Edge = std::pair<const csgVertex*, const csgVertex*>;
    using Rim = std::vector<csgVertex*>;
    using Corners = std::array<csgVertex*, 3>;

    void locateFaces();
    void compactParts();
    void dropDoubles();
    void findMissing();
    bool wasOpen(const csgVertex& from, const csgVertex& to) const;
    bool wasDoubled(const csgFace& face) const;
    [[nodiscard]] bool findRim(std::size_t first, Rim& rim);
    static std::vector<Corners> triangulate(const Rim& rim);
    void close(const Rim& rim);
    [[nodiscard]] bool flatten(const Corners& t);
    [[nodiscard]] bool splitAlong(csgVertex& from, csgVertex& to, csgVertex& middle);
    [[nodiscard]] bool fill(const Corners& t, double lowest);

    csgMesh& mesh;
    const csgBounds where; ///< what is looked at
    std::vector<csgFace*> near;
    csgFacePlaces places;
    std::vector<Missing> missing;
    std::set<Edge> openBefore;          ///< half edges that no face had
    std::vector<Corners> doubledBefore; ///< of faces, in ascending order of addresses
    std::unordered_map<const csgVertex*, std::vector<std::size_t>> missingFrom; ///< looked up, never walked
};
