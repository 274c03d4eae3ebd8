#include "platform/sdl/volume.h"

#include "platform/sdl/backend.h"

#include <SDL_mixer.h>

#include <algorithm>
#include <chrono>

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds noticeTime{1500};
constexpr int musicChannel = 0;

struct Volumes {
    int music = environmentPercent("BRACKENMOOR_MUSIC");
    int effects = environmentPercent("BRACKENMOOR_EFFECTS");
    bool muted = false;
    VolumeNotice notice;
    Clock::time_point noticeEnd;
};

Volumes& volumes() {
    static Volumes instance;
    return instance;
}

int mixerVolume(int percent) {
    return volumes().muted ? 0 : percent * MIX_MAX_VOLUME / 100;
}

void change(const std::string& text, int percent) {
    applyVolumes();
    volumes().notice = {text, percent};
    volumes().noticeEnd = Clock::now() + noticeTime;
}

} // namespace

void applyVolumes() {
    Mix_Volume(-1, mixerVolume(volumes().effects));
    Mix_Volume(musicChannel, mixerVolume(volumes().music));
}

void toggleMute() {
    volumes().muted = !volumes().muted;
    change(volumes().muted ? "Muted" : "Sound on", volumes().muted ? 0 : volumes().effects);
}

void stepVolume(bool music, int percent) {
    int& volume = music ? volumes().music : volumes().effects;
    volume = std::clamp(volume + percent, 0, 100);
    volumes().muted = false;
    change(std::string(music ? "Music " : "Effects ") + std::to_string(volume) + " %", volume);
}

std::optional<VolumeNotice> volumeNotice() {
    if (Clock::now() >= volumes().noticeEnd)
        return std::nullopt;
    return volumes().notice;
}
