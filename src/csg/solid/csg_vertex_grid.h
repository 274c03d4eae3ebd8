#pragma once

#include "csg/solid/csg_vector.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// Finds the vertices near a place. Holds indices into a solid's vertex list, hashed by small cells; what it answers is
/// what a search of the list from its start would, whatever the order in its cells. Vertices are only added, or all
/// dropped.
class csgVertexGrid {
public:
    void clear();
    /// The next vertex of the list stands at `position`.
    void add(const csgVector& position);

    /// Index of the first position of the list that coincides with `place`, or `notFound`.
    std::size_t findFirst(const csgVector& place) const;

    static constexpr std::size_t notFound = static_cast<std::size_t>(-1);

private:
    struct Entry {
        csgVector position;
        std::size_t next; ///< another entry of the same bucket
    };
    struct Cell {
        double x;
        double y;
        double z;
        bool operator==(const Cell&) const = default;
    };

    static Cell cellOf(const csgVector& p, double dx, double dy, double dz);
    std::size_t bucketOf(const Cell& cell) const;
    void grow();
    void link(std::size_t index);

    std::vector<Entry> entries;       ///< one for each vertex, in list order
    std::vector<std::size_t> buckets; ///< newest entry of each bucket; a power of two of them
};
