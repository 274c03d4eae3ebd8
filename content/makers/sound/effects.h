#pragma once

#include "audio.h"

// One function per sound effect of the game. Those marked as loops repeat without a seam; the others start and end in
// silence.

/// A blast with a long low end and falling rubble.
Samples explosionSound();
/// Loop: two wet steps of an inching worm.
Samples walkSound();
/// A twanging leap.
Samples springSound();
/// Loop of one rising pull, longer than the longest charge, so that a charge hears it once only.
Samples powerUpSound();
/// The snap and whoosh of a launch.
Samples releaseSound();
/// Loop: the hissing jet of a rocket in flight.
Samples missileSound();
/// Loop: a sputtering fuse.
Samples fuseSound();
/// A crack with echoes, and the slide pumped afterwards.
Samples shotgunSound();
/// Loop: the engines of a heavy aircraft.
Samples bomberSound();
/// Bells rising through a shimmer.
Samples teleportSound();
