#include "launcher/data_folder.h"

#include "launcher/launch_error.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <set>

namespace {

namespace fs = std::filesystem;

/// Folders within folders beyond which nothing is taken: the game's are two deep, and links can lead in circles.
constexpr int deepest = 4;

/// The names of the levels that there are files of, and that a level list can hold.
std::set<std::string> levelsIn(const std::vector<fs::path>& layers) {
    std::set<std::string> names;
    std::error_code error;
    for (const fs::path& layer : layers)
        for (const fs::directory_entry& entry : fs::directory_iterator(layer / "level", error))
            if (const std::string name = entry.path().stem().string();
                entry.path().extension() == ".lev" && name != "levels" && name.find_first_of(" \t") == name.npos)
                names.insert(name);
    return names;
}

void checkLevel(const std::string& level, const std::vector<fs::path>& layers) {
    const std::set<std::string> names = levelsIn(layers);
    if (names.contains(level))
        return;
    std::string sentence = "there is no level \"" + level + "\", but there are:";
    for (const std::string& name : names)
        sentence += ' ' + name;
    throw LaunchError(sentence, exitBadArguments);
}

fs::path makeTemporary() {
    std::error_code error;
    std::string name = (fs::temp_directory_path(error) / "brackenmoor-XXXXXX").string();
    if (error || mkdtemp(name.data()) == nullptr)
        throw LaunchError("no folder for the game can be made at " + name + ": " + std::strerror(errno), exitFailed);
    return name;
}

/// Links every file of a folder into another, in place of what is there already. What is no file on one side and one on
/// the other stays as it was.
void linkFiles(const fs::path& from, const fs::path& to, int depth = 0) {
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(from, error)) {
        const fs::path target = to / entry.path().filename();
        if (entry.is_directory(error) && depth < deepest) {
            fs::create_directory(target, error);
            linkFiles(entry.path(), target, depth + 1);
        } else if (entry.is_regular_file(error) && !fs::is_directory(target, error)) {
            fs::remove(target, error);
            fs::create_symlink(fs::absolute(entry.path()), target);
        }
    }
}

void listAlone(const std::string& level, const fs::path& folder) {
    const fs::path list = folder / "level/levels.lev";
    fs::remove(list);
    if (!(std::ofstream(list) << "1\n" << level << '\n'))
        throw LaunchError(list.string() + " cannot be written", exitFailed);
}

} // namespace

DataFolder::DataFolder(const std::vector<fs::path>& layers, const std::string& level) : folder(layers.front()) {
    if (!level.empty())
        checkLevel(level, layers);
    if (layers.size() == 1 && level.empty())
        return;
    folder = makeTemporary();
    temporary = true;
    try {
        for (const fs::path& layer : layers)
            linkFiles(layer, folder);
        if (!level.empty())
            listAlone(level, folder);
    } catch (...) {
        std::error_code error;
        fs::remove_all(folder, error);
        throw;
    }
}

DataFolder::~DataFolder() {
    std::error_code error;
    if (temporary)
        fs::remove_all(folder, error);
}
