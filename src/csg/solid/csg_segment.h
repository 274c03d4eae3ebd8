#pragma once

#include "csg/solid/csg_vector.h"

#include <cstdint>

class csgFace;
class csgLine;
class csgVertex;

/// What an end of a segment, or the stretch between its ends, is in the face.
enum class csgSegmentType : std::int32_t { none = 0, corner = 1, inFace = 2, edge = 3 };

/// The part of a line that lies inside one face. Start distance <= end distance once both ends are set. Refers to the
/// line and to the face's corners without owning them; they outlive it.
class csgSegment {
public:
    struct End {
        double distance = 0.0;                      ///< signed, along the line
        csgSegmentType type = csgSegmentType::none; ///< a corner or an edge
        /// The corner itself, or where the edge begins that the end stands on.
        csgVertex* vertex = nullptr;
        csgVector position;
    };

    End start;
    End end;
    /// A single corner, through the face, or along an edge.
    csgSegmentType middleType = csgSegmentType::none;
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
