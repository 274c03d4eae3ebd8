#pragma once

// What hostile play keeps of each round: how long it was, and what the program held in memory when it began, by level.

#include <cstddef>
#include <map>
#include <string>
#include <utility>

class RoundLog {
public:
    /// Notes the beginning of a round in a scene that is as new; the numbers of solids and faces, which tell its level.
    const std::string& begin(unsigned round);
    void end(unsigned frameCount, unsigned turnCount);
    /// A sentence on a level whose rounds hold more and more, or nothing.
    std::string growth() const;
    std::size_t countLevels() const { return levels.size(); }
    void print() const;

private:
    struct Sample {
        unsigned round = 0;
        std::size_t bytes = 0;
    };
    /// Of the same size after the first round as after the last, or the log itself would be growth.
    struct Level {
        unsigned rounds = 0;
        unsigned long frames = 0;
        unsigned long turns = 0;
        Sample settled; ///< the first after the warm-up, in which sounds are opened that stay
        Sample last;
    };

    std::map<std::string, Level> levels;
    std::pair<const std::string, Level>* current = nullptr;
};
