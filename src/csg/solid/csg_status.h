#pragma once

#include <cstdint>

/// Classification of a vertex or face against the other solid of a boolean operation. Vertices and faces share the
/// values; what 4 means depends on which it is.
enum class csgStatus : std::int32_t {
    unclassified = 1,
    inside = 2,
    outside = 3,
    onCut = 4,            ///< vertex: made by, or met by, a cut
    coplanarSame = 4,     ///< face: lies on a face of the other solid, same facing
    coplanarOpposite = 5, ///< face: lies on a face of the other solid, opposite facing
    straddling = 6        ///< face: too thin to be cut, inside here and outside there
};
