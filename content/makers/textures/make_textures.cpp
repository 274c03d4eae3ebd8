// Makes every texture that is painted by numbers; the font has a maker of its own.

#include "textures.h"

#include <string>

namespace {

struct Sheet {
    const char* name;
    Image (*make)();
    bool withAlpha;
};

constexpr Sheet sheets[] = {
    {"earth", earthTexture, false},     {"grass", grassTexture, false},
    {"rock", rockTexture, false},       {"sand", sandTexture, false},
    {"heather", heatherTexture, false}, {"water", waterTexture, true},
    {"sky", skyTexture, false},         {"deep", deepTexture, false},
    {"wurm", wormTexture, false},       {"weapons", weaponsTexture, false},
    {"hud", hudTexture, true},          {"explosion", explosionTexture, true},
    {"smoke", smokeTexture, true},      {"redstone", redstoneTexture, false},
    {"slate", slateTexture, false},     {"moss", mossTexture, false},
    {"snow", snowTexture, false},       {"ash", ashTexture, false},
    {"brick", brickTexture, false},     {"planks", planksTexture, false},
    {"Rocket", crateTexture, false},
};

} // namespace

/// Argument: the directory to write into.
int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    const std::filesystem::path directory = argv[1];
    for (const Sheet& sheet : sheets) {
        if (!writeTga(directory / (std::string(sheet.name) + ".tga"), sheet.make(), sheet.withAlpha))
            return 1;
    }
    return 0;
}
