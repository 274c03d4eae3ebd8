#pragma once

// How loud the game is: what plays on channel 0 is music, everything else an effect. It begins as the environment says,
// and is changed by keys.

#include <optional>
#include <string>

/// Tells the mixer, which has been opened anew.
void applyVolumes();
/// Silences everything, or lets it be heard again.
void toggleMute();
/// Makes music or effects louder by this many per cent of the most; heard again if they were muted.
void stepVolume(bool music, int percent);

/// What a change is shown as.
struct VolumeNotice {
    std::string text;
    int percent = 0;
};
/// The last change, for a moment after it.
std::optional<VolumeNotice> volumeNotice();
