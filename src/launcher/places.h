#pragma once

// Where things are looked for on this machine. A path that is empty is a place that does not exist here.

#include <filesystem>
#include <vector>

/// The player's file of settings, in the XDG configuration home.
std::filesystem::path settingsFile();
/// The player's own data files, in the XDG data home.
std::filesystem::path ownDataFolder();

/// The launcher itself, links followed.
std::filesystem::path launcherFile(const char* calledAs);
/// The game program: beside the launcher as it is built, or where it is installed. Throws LaunchError when it is
/// missing.
std::filesystem::path findGame(const std::filesystem::path& launcherFolder);

/// Whether a whole set of data begins here: a folder with a level list.
bool holdsData(const std::filesystem::path& folder);

/// The folders that the game's data are made of, the lowest first: a file of a later one lies over the same of an
/// earlier one. `asked` (--data), or else $BRACKENMOOR_DATA, stands alone; otherwise the player's own folder lies over
/// the shipped data. Throws LaunchError, which lists every place tried, when there are none.
std::vector<std::filesystem::path> findData(const std::filesystem::path& asked,
                                            const std::filesystem::path& launcherFolder);
