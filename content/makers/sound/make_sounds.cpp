// Makes every sound of the game.

#include "effects.h"
#include "song.h"

#include <string>

namespace {

struct Effect {
    const char* name;
    Samples (*make)();
};

constexpr Effect effects[] = {
    {"Explosion1", explosionSound},
    {"Walk", walkSound},
    {"WORMSPRING", springSound},
    {"ROCKETPOWERUP", powerUpSound},
    {"ROCKETPOWERRELEASE", releaseSound},
    {"Missile", missileSound},
    {"fuse", fuseSound},
    {"ShotGunFire", shotgunSound},
    {"bomber", bomberSound},
    {"Teleport", teleportSound},
};

} // namespace

/// Argument: the directory to write into, which has the directories sfx and music.
int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    const std::filesystem::path directory = argv[1];
    for (const Effect& effect : effects) {
        if (!writeWav(directory / "sfx" / (std::string(effect.name) + ".wav"), {effect.make()}))
            return 1;
    }
    return writeWav(directory / "music" / "pirate1.wav", seaSong()) ? 0 : 1;
}
