#pragma once

#include <cstddef>
#include <cstdint>

class Team;
class Worm;

/// Looks into the game that is running.
namespace world {

/// The worm whose turn it is; null when there is none.
Worm* activeWorm();
/// Faces of all landscape solids.
std::size_t landFaces();
/// A hash over the bits of all that decides the game: teams, worms, weapons, ammunition, nodes and the landscape.
std::uint64_t stateHash();

} // namespace world
