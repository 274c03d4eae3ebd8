#pragma once

#include "csg_writer.h"

/// Chooses a texture for every triangle of a landscape solid by its slope and height: earth under overhangs and on
/// banks (and, being the first part, in craters), rock on walls, sand on low even shores, grass on gentle ground and
/// heather on the heights. Single odd triangles join their neighbours, so that borders stay calm.
SolidPaint paintLand(const TriangleMesh& mesh);
