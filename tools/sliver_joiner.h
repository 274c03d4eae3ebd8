#pragma once

// Joins slivers to their neighbours before a solid is written.
//
// Closing the gaps along a crater's rim takes triangles of any area, and a reader drops those of at most
// csgPlaneTolerance: land that is closed in memory would come back with gaps. Such a face leaves in one of two ways.
// Where its neighbour across the longest edge is large enough, the edge between the two is turned: the same four
// corners, two faces that are read. Where it is a needle, its shortest edge shrinks to one of its ends. Either moves
// the surface by no more than the sliver's height or shortest side, some thousandths of a unit; it stays closed, and no
// other face turns over.

#include "csg/solid/csg_vector.h"

#include <cstddef>
#include <optional>

class csgMesh;

struct JoinedSlivers {
    std::size_t joined = 0;
    std::size_t left = 0;                 ///< that have no such way out
    std::optional<csgVector> firstLeft{}; ///< where one of them is
};

JoinedSlivers joinSlivers(csgMesh& mesh);
