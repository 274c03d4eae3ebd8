#include "launcher/places.h"

#include "launcher/launch_error.h"

#include <cstdlib>
#include <string>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr const char* levelList = "level/levels.lev";

fs::path fromEnvironment(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// Our folder in one of the XDG homes; the standard has relative paths ignored.
fs::path homeFolder(const char* variable, const char* fallback) {
    fs::path base = fromEnvironment(variable);
    if (!base.is_absolute())
        base = fromEnvironment("HOME") / fallback;
    return base.is_absolute() ? base / "brackenmoor" : fs::path();
}

bool isDirectory(const fs::path& path) {
    std::error_code error;
    return !path.empty() && fs::is_directory(path, error);
}

[[noreturn]] void sayNothingFound(const std::vector<fs::path>& tried) {
    std::string sentence = "the game's data were not found: no " + std::string(levelList) + " in any of these folders:";
    for (const fs::path& place : tried)
        sentence += "\n  " + place.lexically_normal().string();
    throw LaunchError(sentence, exitNoData);
}

} // namespace

fs::path settingsFile() {
    const fs::path folder = homeFolder("XDG_CONFIG_HOME", ".config");
    return folder.empty() ? folder : folder / "settings";
}

fs::path ownDataFolder() {
    return homeFolder("XDG_DATA_HOME", ".local/share");
}

fs::path launcherFile(const char* calledAs) {
    std::error_code error;
    const fs::path self = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::weakly_canonical(calledAs, error) : self;
}

fs::path findGame(const fs::path& launcherFolder) {
    const fs::path built = launcherFolder / "libexec/brackenmoor-game";
    const fs::path installed = launcherFolder / BRACKENMOOR_LIBEXEC_FROM_BIN / "brackenmoor-game";
    for (const fs::path& program : {built, installed})
        if (access(program.c_str(), X_OK) == 0)
            return program;
    throw LaunchError("the game program is missing: neither " + built.string() + " nor " +
                          installed.lexically_normal().string() + " can be run",
                      exitFailed);
}

bool holdsData(const fs::path& folder) {
    std::error_code error;
    return !folder.empty() && fs::is_regular_file(folder / levelList, error);
}

std::vector<fs::path> findData(const fs::path& asked, const fs::path& launcherFolder) {
    const fs::path alone = !asked.empty() ? asked : fromEnvironment("BRACKENMOOR_DATA");
    if (holdsData(alone))
        return {fs::absolute(alone)};
    if (!alone.empty())
        sayNothingFound({alone});
    const fs::path own = ownDataFolder();
    std::vector<fs::path> tried;
    if (!own.empty())
        tried.push_back(own);
    for (const fs::path& shipped : {launcherFolder / BRACKENMOOR_DATA_FROM_BIN, launcherFolder / "data"}) {
        if (holdsData(shipped))
            return isDirectory(own) ? std::vector{shipped, own} : std::vector{shipped};
        tried.push_back(shipped);
    }
    if (holdsData(own))
        return {own};
    sayNothingFound(tried);
}
