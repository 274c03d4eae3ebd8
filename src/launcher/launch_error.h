#pragma once

#include <stdexcept>
#include <string>

/// Why the game is not started: a sentence for the player and what the launcher ends with.
struct LaunchError : std::runtime_error {
    LaunchError(const std::string& sentence, int exitStatus) : std::runtime_error(sentence), status(exitStatus) {}
    int status;
};

/// Exit statuses; everything else is the game's own.
inline constexpr int exitFailed = 1;
inline constexpr int exitBadArguments = 2;
inline constexpr int exitNoData = 3;

/// One line on stderr.
void sayNotice(const std::string& sentence);
