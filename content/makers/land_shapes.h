#pragma once

#include "land_paint.h"
#include "remesher.h"
#include "surface_mesher.h"

#include <string>

/// One landscape solid before surfacing. Most stand in the sea with the water at y = 0, reach down to about y = -13,
/// and have an undercut coast; the others float high above it. Nothing that faces up lies below about y = 8, so no worm
/// can be dropped into the water's reach.
struct LandShape {
    std::string name; ///< file name without directory and extension
    Field field;
    SampleBox box;
    EdgeLength edgeLength;
    LandTheme theme;
};

/// A wide island of terraced hills with a bay and a tunnel through its highest hill.
LandShape moorholm();
/// A natural arch standing in the sea on two legs.
LandShape archRock();
/// A sea stack with a flat top.
LandShape seaStack();
/// Red table mountains, a narrow arm of the sea between any two, joined by bridges of rock.
LandShape skerries();
/// A red sea stack.
LandShape needle();
/// A ring of ash and moss around a lake that the sea fills through a gate.
LandShape ringmere();
/// A natural arch of black rock.
LandShape basaltArch();
/// A floating island: a meadow on a root of rock.
LandShape floatingIsle();
/// The walls and towers of a ruin on a snowed-in rock.
LandShape fortress();
/// A watchtower on a rock of its own.
LandShape watchtower();
