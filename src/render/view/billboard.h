#pragma once

// Quads in the scene that face the viewer: explosions and smoke.

#include "render/camera/camera.h"
#include "render/math/vector2.h"

#include <array>

class Texture;

/// Starts a batch of quads: lighting and depth writes off, the texture bound when there is one.
void beginBillboards(Texture* texture);
/// One square, `scale` half its side, with the texture coordinates of its lower right, upper right, upper left and
/// lower left corner.
void drawBillboard(const BillboardAxes& axes, const Vector3& centre, float scale,
                   const std::array<Vector2, 4>& textureCoords);
/// Ends the batch: lighting and depth writes on.
void endBillboards();
