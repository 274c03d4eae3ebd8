#pragma once

// The folder that the game is started in: one of those with data where that is all there is to it, otherwise a
// temporary one of links, which ends with this object.

#include <filesystem>
#include <string>
#include <vector>

class DataFolder {
public:
    /// `layers` as of findData. With a level's name the game is given that level alone; throws LaunchError, which names
    /// those there are, when there is none of that name, and when the links cannot be made.
    DataFolder(const std::vector<std::filesystem::path>& layers, const std::string& level);
    ~DataFolder();
    DataFolder(const DataFolder&) = delete;
    DataFolder& operator=(const DataFolder&) = delete;

    const std::filesystem::path& path() const { return folder; }

private:
    std::filesystem::path folder;
    bool temporary = false;
};
