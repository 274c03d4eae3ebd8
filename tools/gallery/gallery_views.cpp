// Renders every model, texture, solid and level of the current directory through the game's renderer, one PPM file a
// view. Where they go is named by the environment variable GALLERY_OUTPUT.

#include "scenes.h"
#include "stage.h"

#include "core/app/game_loader.h"
#include "platform/win32.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

namespace {

std::vector<std::string> namesIn(const char* directory, const char* extension) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(directory))
        if (entry.path().extension() == extension)
            names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previousInstance*/, LPSTR /*commandLine*/, int /*show*/) {
    const char* const output = std::getenv("GALLERY_OUTPUT");
    if (output == nullptr) {
        std::cerr << "gallery_views: GALLERY_OUTPUT names no directory\n";
        return -1;
    }
    Stage stage(output);
    if (!stage.isOpen())
        return -1;
    for (const std::string& name : namesIn("textures", ".tga"))
        stage.shootTexture(name, "texture-" + name);
    for (const std::string& name : namesIn("mesh", ".ms3d"))
        shootModel(stage, name);
    for (const std::string& name : namesIn("csg", ".csg"))
        shootSolid(stage, name);
    shootCuts(stage);
    std::vector<std::string> levels;
    readLevelList(levels);
    for (const std::string& name : levels)
        shootLevel(stage, name);
    if (!levels.empty())
        shootWeapons(stage, levels.front());
    return stage.getFailures() == 0 ? 0 : -1;
}
