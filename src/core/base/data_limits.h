#pragma once

// How much the loaders take from a file before they call it broken. Shipped data stay far below every limit.

#include <cmath>
#include <cstddef>
#include <cstdint>

/// World units. Single precision still tells 1/16 apart here; beyond, sums and products drift towards infinity.
inline constexpr double largestCoordinate = 1e6;
/// Bytes of a file that is read whole.
inline constexpr std::uint64_t largestFile = std::uint64_t{256} << 20;
/// Characters of a name in a text file; longer ones could not be opened as files anyway.
inline constexpr std::size_t longestName = 1000;

/// Whether a number can be a coordinate: what is not a number cannot.
inline bool isCoordinate(double value) {
    return std::fabs(value) <= largestCoordinate;
}
