#pragma once

// A player without manners: whole rounds on the shipped data by random keys, mouse and window messages, in frames of 0
// ms to 10 s. Each round begins with some turns of that and is then brought to its end by means open to every player:
// the bazooka at one's own feet. Everything follows from the seed, the game's own random stream included.

#include "core/scene_node.h"
#include "hostile/bot_random.h"
#include "hostile/round_log.h"
#include "support/script.h"

#include <cstdint>
#include <memory>
#include <string>

class Worm;

class HostileBot {
public:
    HostileBot(std::uint64_t seedNumber, unsigned roundCount, bool reportRounds);

    /// Runs WinMain from its beginning to its end. The current directory holds the game's data.
    void play();
    /// What went wrong, with seed, round, frame and level; empty when nothing did.
    const std::string& getFault() const { return fault; }
    /// Over the worms in every frame and the whole world at the end of every round.
    std::uint64_t getHash() const { return hash; }
    const RoundLog& getLog() const { return log; }
    /// Where the bot is now, for whoever reports an abrupt end.
    std::string whereabouts() const;

private:
    void endOfFrame();
    void endOfGame(int status);
    void chooseFrameTime();
    void inspect();
    void mixFrame();
    void mix(std::uint64_t value);
    void fail(const std::string& what);

    Script playRounds();
    Script playRound();
    Script playWildTurn();
    Script playWildly(unsigned frameCount);
    Script playOneMove();
    Script finishRound();
    Script walkSomewhere();
    Script shootOwnFeet();
    Script checkThatTheWormCanMove();
    Script startNextRound();

    void beginRound();
    bool isRoundOver() const;
    void causeEvent();
    void causeWindowEvent();
    void toggleKey();
    void nudgeMouse(int farthest);
    void resize(int largest);
    void minimise();
    void whileMinimised();
    void releaseEverything();

    const std::uint64_t seed;
    const unsigned rounds;
    const bool reporting;
    BotRandom random;
    RoundLog log;
    std::string fault;
    std::uint64_t hash = 14695981039346656037u;

    unsigned round = 0;
    std::string levelName;
    unsigned framesOfRound = 0;
    unsigned turnsOfRound = 0;
    std::unique_ptr<NodeWatch> scene; ///< of the round
    const Worm* lastActive = nullptr;
    unsigned framesAfterQuit = 0;
    /// Frames of no time that are still to come.
    unsigned burst = 0;
    bool ordinaryFrames = false;
    unsigned looksWhileMinimised = 0;
};
