#pragma once

#include "remesher.h"
#include "surface_mesher.h"

#include <string>
#include <vector>

/// One landscape solid before surfacing. All stand in the sea with the water at y = 0, reach down to about y = -13, and
/// have an undercut coast: nothing that faces up lies below about y = 8, so no worm can be dropped into the water's
/// reach.
struct LandShape {
    std::string name; ///< file name without directory and extension
    Field field;
    SampleBox box;
    EdgeLength edgeLength;
};

/// A wide island of terraced hills with a bay and a tunnel through its highest hill.
LandShape moorholm();
/// A natural arch standing in the sea on two legs.
LandShape archRock();
/// A sea stack with a flat top.
LandShape seaStack();
