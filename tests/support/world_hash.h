#pragma once

#include <cstdint>
#include <string>

class Team;
class Worm;

/// Looks into the game that is running.
namespace world {

/// The worm whose turn it is; null when there is none.
Worm* activeWorm();
/// The worm of that name, or null.
Worm* worm(const std::string& name);
/// Number of scene-root children of a kind, by node name.
int countNodes(const std::string& nodeName);
/// Faces of all landscape solids.
std::size_t landFaces();
/// A hash over the bits of all that decides the game: teams, worms, weapons, ammunition, nodes and the landscape.
std::uint64_t stateHash();

} // namespace world
