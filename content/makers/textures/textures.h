#pragma once

#include "../image.h"

// One function per texture of the game. Ground, water and sky textures tile; sheets (hud, explosion) have their first
// row of cells in the first row of the file.

Image earthTexture();
Image grassTexture();
Image rockTexture();
Image sandTexture();
Image heatherTexture();
Image redstoneTexture();
Image slateTexture();
Image mossTexture();
Image snowTexture();
Image ashTexture();
Image brickTexture();
Image planksTexture();
/// One side of a wooden crate.
Image crateTexture();
/// Bright, because the sea multiplies two layers of it; alpha lets the depth shine through.
Image waterTexture();
/// The upper half of the sky seen straight up: the zenith in the middle, the horizon at the inscribed circle.
Image skyTexture();
/// What lies under the sea: t = 0 at the horizon, t = 1 straight down.
Image deepTexture();
/// Left to right around a worm's body (u = 0.5 in front), upwards along it to v = 0.75; the eye in the upper left
/// corner.
Image wormTexture();
/// Four by four swatches of material for the weapons; see swatches.h.
Image weaponsTexture();
/// Eight by eight cells: column 0 crosshair and target marker, column 1 the five weapons.
Image hudTexture();
/// Five by five frames from flash to smoke.
Image explosionTexture();
/// One soft puff.
Image smokeTexture();
