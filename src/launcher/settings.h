#pragma once

// What the player has chosen, by name. Choices reach the game as environment variables (platform/sdl/sdl_desktop.h) and
// are remembered in a text file with a line "name = number" for each.

#include <filesystem>
#include <map>
#include <string>

/// Choices by their option's name; those that were never made are not in it.
using Settings = std::map<std::string, int>;

/// What the file holds. When it is broken, a notice is said and nothing holds: it is put aside as soon as it would be
/// written over.
Settings readSettings(const std::filesystem::path& file);

/// Remembers the choices. When that cannot be done, a notice is said.
void writeSettings(const std::filesystem::path& file, const Settings& settings);

/// Forgets them all.
void resetSettings(const std::filesystem::path& file);

/// Puts the choices into the environment, where what is there already either stays or goes.
void handOn(const Settings& settings, bool replace);
