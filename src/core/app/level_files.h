#pragma once

// What the text files of levels and teams say, read from text in memory.
//
// Counts are limits to stop at, never sizes to make room for. A count that promises more entries than there are repeats
// the last complete one; an entry that breaks off counts as missing. Real numbers are finite and names at most
// `longestName` long, or their read fails. Names are used as they stand, path separators included.
//
// Whatever keeps a text from being taken as it was meant is a fault: an item that cannot be read, entries that are
// missing, and text behind the last entry, which is what a number too many looks like. What is refused has a fault too,
// the last one.

#include "core/base/text_reader.h"

#include <array>
#include <string>
#include <vector>

/// More solids, teams or worms a team than this are refused; more names than this are not made up by repetition.
inline constexpr int mostSolids = 1000;
inline constexpr int mostTeams = 100;
inline constexpr int mostWorms = 100;
inline constexpr int mostRepeatedNames = 1000;
/// Worms of all teams together: every worm that is dropped lets all those before it take a step past each other.
inline constexpr int mostWormsInAll = 200;

/// One solid of a level file: its name and how it is placed.
struct SolidEntry {
    std::string name;
    /// Where the entry stands in its file.
    int line = 0;
    double scale[3] = {1.0, 1.0, 1.0};
    /// Radians.
    double rotation[3] = {0.0, 0.0, 0.0};
    double translation[3] = {0.0, 0.0, 0.0};
};

/// One team of the team list: its name and how many worms it fields, 0 or less for none.
struct TeamEntry {
    std::string name;
    int wormCount = 0;
};

struct LevelText {
    /// False when the count cannot be read, is negative or beyond `mostSolids`.
    bool usable = false;
    /// An entry before which none was complete is left out.
    std::vector<SolidEntry> solids;
    std::vector<TextFault> faults;
};
[[nodiscard]] LevelText readLevelText(std::string text);

struct TeamListText {
    /// False when the list names no team or breaks a limit, or when the first name is missing.
    bool usable = false;
    std::vector<TeamEntry> teams;
    std::vector<TextFault> faults;
};
[[nodiscard]] TeamListText readTeamListText(std::string text);

struct TeamText {
    std::vector<std::string> wormNames;
    /// Red, green, blue.
    std::array<float, 3> colour{};
    std::vector<TextFault> faults;
};
/// Components of the colour that the text does not hold are those given.
[[nodiscard]] TeamText readTeamText(std::string text, const std::array<float, 3>& colour);

struct LevelListText {
    std::vector<std::string> names;
    std::vector<TextFault> faults;
};
[[nodiscard]] LevelListText readLevelListText(std::string text);
