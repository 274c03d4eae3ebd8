#pragma once

#include "csg/csg_vector.h"

#include <cstdint>

class csgFace;
class csgLine;
class csgVertex;

/// What an end, or the stretch between the ends, of a segment is in its face.
inline constexpr std::int32_t csgAtCorner = 1;
inline constexpr std::int32_t csgInFace = 2;
inline constexpr std::int32_t csgOnEdge = 3;

/// The part of a line that lies inside one face. Start distance <= end distance once both ends are set. Refers to the
/// line and to the face's corners without owning them; they outlive it.
class csgSegment {
public:
    struct End {
        double distance = 0.0; ///< signed, along the line
        std::int32_t type = 0; ///< csgAtCorner or csgOnEdge
        /// The corner, or the first corner of the edge that the end lies on.
        csgVertex* vertex = nullptr;
        csgVector position;
    };

    End start;
    End end;
    std::int32_t middleType = 0; ///< csgAtCorner: a single corner; csgInFace; csgOnEdge: along an edge
    std::int32_t endCount = 0;

    /// `s0`, `s1`, `s2`: the signs of the face's corners against the plane that the line was made with.
    csgSegment(const csgLine& onLine, const csgFace& face, int s0, int s1, int s2);

    void swapEnds();

private:
    void setVertexEnd(csgVertex* corner);
    void setEdgeEnd(csgVertex* first, csgVertex* second);
    /// The end to be set next; null when both are set.
    End* nextEnd();
    void finishEnd();

    const csgLine* line;
};

/// True when two segments of one line share more than a point.
bool overlaps(const csgSegment& s, const csgSegment& t);
