#pragma once

#include <filesystem>

/// From here on the signals that end a program wait until `runGame` looks for them: what is to be tidied up is.
void holdSignals();

/// Runs the game in its folder until it ends, and hands on to it the signals that would end the launcher. What the game
/// ends with; 128 and the signal's number where a signal ended it.
[[nodiscard]] int runGame(const std::filesystem::path& program, const std::filesystem::path& folder);
