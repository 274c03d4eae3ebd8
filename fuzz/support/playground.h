#pragma once

// A tiny level for the fuzzers of levels and teams: one slab, one team.

class Bench;

/// Level "flat" on the solid "slab", team "A" with one worm and, for every other name, its file.
void putFlatLevel();
/// Loads the level "flat" through the game's loader. Where it can be played it is drawn, from the active worm's camera
/// with its labels and the HUD, and played for two frames; where it cannot, one message box must say why. Ends the
/// round.
void playFlatLevel(const Bench& bench);
