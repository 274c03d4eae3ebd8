#pragma once

// A sound device can go away while the game plays: unplugged, or its sound server ends. The mixer is then opened anew
// on whatever there is, at once or as soon as there is something. Streams and the channels they were started on stay as
// they are; what loops begins anew, what would have ended by itself is not played again.

/// Closes the mixer, whose device is gone. Nothing happens when it is not open.
void loseSoundDevice();

/// Lets everything that plays stand where it is, and go on from there.
void pauseSound();
void resumeSound();

/// Tries to open a lost mixer again, at most once a second; called in every frame.
void regainSoundDevice();
