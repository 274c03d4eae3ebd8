#pragma once

#include <cstdint>

/// What came of a round.
struct RoundRecord {
    unsigned turns = 0;
    int teamsLeft = 0;
    bool bannerShown = false;
    bool nextRoundStarted = false;
    /// Of the world at the end of the round.
    std::uint64_t stateHash = 0;
};

/// Plays a round on the data of the current directory until one team is left or none, with the bazooka alone: every
/// worm fires once at the nearest enemy and the losing team's worms at their own feet. Then Enter. WinMain's result.
/// With a limit the round breaks off after that many turns.
int playWholeRound(unsigned seed, RoundRecord& record, unsigned turnLimit = 200);
