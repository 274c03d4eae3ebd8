#pragma once

// The bodies of a solid: surfaces that hang together by edges. The game's craters are right where bodies are apart;
// where two touch or overlap, a wall of one lies in the other, and what is inside and what outside has two answers.

#include "csg/solid/csg_mesh.h"

#include <cstddef>
#include <vector>

struct BodyContact {
    std::size_t first;  ///< number of a body, from 1, in the order of their first faces
    std::size_t second; ///< of a later one
    csgVector where;    ///< a common vertex, or the middle of what their boxes have in common
};

struct Bodies {
    std::size_t count = 0;
    /// Pairs that share a vertex, cross, or lie one in the other. One inside another that is turned inside out is its
    /// cavity and in order. The solid is taken to be closed.
    std::vector<BodyContact> contacts{};
};
Bodies findBodies(const csgMesh& solid);
