#pragma once

// A player without manners: whole rounds on the shipped data by random keys, mouse and window messages, in frames of 0
// ms to 10 s. Each round begins with some turns of that and is then brought to its end by means open to every player:
// the bazooka at one's own feet. Everything follows from the seed, the game's own random stream included.

#include "core/scene/scene_node.h"
#include "hostile/bot_random.h"
#include "hostile/round_log.h"
#include "hostile/wild_input.h"
#include "support/hash.h"
#include "support/script.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>

class Worm;

class HostileBot {
public:
    HostileBot(std::uint64_t seedNumber, unsigned roundCount);

    /// Runs WinMain from its beginning to its end. The current directory holds the game's data.
    void play();
    /// What went wrong, with seed, round, frame and level; empty when nothing did.
    const std::string& getFault() const { return fault; }
    /// Over the worms in every frame and the whole world at the end of every round.
    std::uint64_t getHash() const { return hash.get(); }
    /// What was played, line by line, and what the levels held in memory.
    void print() const;

private:
    std::string whereabouts() const;
    void endOfFrame();
    void endOfGame(int status);
    void inspect();
    void countShots(const Worm* active);
    void fail(const std::string& what);

    Script playRounds();
    Script playRound();
    Script playWildTurn();
    Script playOneMove();
    Script finishRound();
    Script walkSomewhere();
    Script shootOwnFeet();
    Script checkThatTheWormCanMove();
    Script startNextRound();

    void beginRound();
    bool isRoundOver() const;

    const std::uint64_t seed;
    const unsigned rounds;
    BotRandom random;
    WildInput input;
    RoundLog log;
    std::string fault;
    Hash<> hash;

    unsigned round = 0;
    std::string levelName;
    unsigned framesOfRound = 0;
    unsigned turnsOfRound = 0;
    std::unique_ptr<NodeWatch> scene; ///< of the round
    const Worm* lastActive = nullptr;
    std::array<unsigned, 5> shots{}; ///< by weapon
    unsigned lastShots = 0;
    unsigned wormsInTheWay = 0; ///< found in the ground or in another worm
    unsigned framesAfterQuit = 0;
    Pace pace = Pace::wild;
};
