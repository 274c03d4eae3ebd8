#pragma once

#include <cstdint>

/// What came of a round.
struct RoundRecord {
    unsigned turns = 0;
    int teamsLeft = 0;
    /// Of the world at the end of the round.
    std::uint64_t stateHash = 0;
};

/// Plays a round on the data of the current directory until one team is left or none, with the bazooka alone: every
/// worm fires once at the nearest enemy and the losing team's worms at their own feet. WinMain's result.
int playWholeRound(unsigned seed, RoundRecord& record);
