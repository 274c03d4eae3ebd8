#include "csg/solid/csg_vertex_grid.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace {

/// Cells to the world unit: so fine that a cell seldom holds two vertices, so coarse that the tolerance seldom reaches
/// a neighbouring cell.
constexpr double cellsPerUnit = 1024.0;
/// How far around a place its equals are looked for; a little more than the tolerance, to be safe from rounding.
constexpr double reach = 2.0 * csgPlaneTolerance;

std::uint64_t mix(std::uint64_t hash, double coordinate) {
    // -0.0 and 0.0 are one cell.
    hash ^= std::bit_cast<std::uint64_t>(coordinate + 0.0);
    hash *= 0x9e3779b97f4a7c15ULL;
    return hash ^ (hash >> 29);
}

} // namespace

csgVertexGrid::Cell csgVertexGrid::cellOf(const csgVector& p, double dx, double dy, double dz) {
    return {std::floor((p.x + dx) * cellsPerUnit), std::floor((p.y + dy) * cellsPerUnit),
            std::floor((p.z + dz) * cellsPerUnit)};
}

std::size_t csgVertexGrid::bucketOf(const Cell& cell) const {
    const std::uint64_t hash = mix(mix(mix(1, cell.x), cell.y), cell.z);
    return static_cast<std::size_t>(hash & (buckets.size() - 1));
}

void csgVertexGrid::clear() {
    entries.clear();
    buckets.clear();
}

void csgVertexGrid::add(const csgVector& position) {
    entries.push_back({position, notFound});
    if (entries.size() > buckets.size())
        grow();
    else
        link(entries.size() - 1);
}

void csgVertexGrid::grow() {
    buckets.assign(std::max<std::size_t>(64, 2 * buckets.size()), notFound);
    for (std::size_t i = 0; i < entries.size(); ++i)
        link(i);
}

void csgVertexGrid::link(std::size_t index) {
    std::size_t& head = buckets[bucketOf(cellOf(entries[index].position, 0.0, 0.0, 0.0))];
    entries[index].next = head;
    head = index;
}

std::size_t csgVertexGrid::findFirst(const csgVector& place) const {
    if (entries.empty())
        return notFound;
    const Cell low = cellOf(place, -reach, -reach, -reach);
    const Cell high = cellOf(place, reach, reach, reach);
    std::size_t first = notFound;
    // Two cells along an axis at most, one nearly always.
    for (int corner = 0; corner < 8; ++corner) {
        const Cell cell{(corner & 1) != 0 ? high.x : low.x, (corner & 2) != 0 ? high.y : low.y,
                        (corner & 4) != 0 ? high.z : low.z};
        const bool seen = ((corner & 1) != 0 && high.x == low.x) || ((corner & 2) != 0 && high.y == low.y) ||
                          ((corner & 4) != 0 && high.z == low.z);
        if (seen)
            continue;
        for (std::size_t i = buckets[bucketOf(cell)]; i != notFound; i = entries[i].next) {
            if (i < first && entries[i].position.coincides(place))
                first = i;
        }
    }
    return first;
}
