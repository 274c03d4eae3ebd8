#pragma once

// What must be true of the running game at the end of every frame, however it is played.

#include <string>

class Worm;

namespace inspection {

/// A sentence on the first thing found wrong, or nothing. Cheap enough for every frame.
std::string faultOfFrame();
/// Whether the worm's centre lies inside the land, by parity along three verticals close to each other.
bool isInsideLand(const Worm& worm);
/// Whether the worm's body and another worm's cut into each other deeply.
bool isInsideWorm(const Worm& worm);

} // namespace inspection
