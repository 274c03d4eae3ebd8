#pragma once

#include <cstdint>

/// Classification of a vertex or face against the other solid of a boolean operation. The values are shared: 4 is the
/// cut for a vertex, a coplanar face for a face.
inline constexpr std::int32_t csgUnclassified = 1;
inline constexpr std::int32_t csgInside = 2;
inline constexpr std::int32_t csgOutside = 3;
inline constexpr std::int32_t csgOnCut = 4;            ///< vertex: made by, or met by, a cut
inline constexpr std::int32_t csgCoplanarSame = 4;     ///< face: lies on a face of the other solid, same facing
inline constexpr std::int32_t csgCoplanarOpposite = 5; ///< face: lies on a face of the other solid, opposite facing
inline constexpr std::int32_t csgStraddling = 6;       ///< face: too thin to be cut, inside here and outside there
