#pragma once

// What hostile play keeps of each round: how long it was, and what the program held in memory when it began, by level.

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>

class RoundLog {
public:
    /// Reads the level list, so that a scene can be told by its number of solids and faces. Shipped data must be
    /// current.
    RoundLog();

    /// Notes the beginning of a round in a scene that is as new; the name of its level.
    const std::string& begin(unsigned round);
    void end(unsigned frameCount, unsigned turnCount);
    /// A sentence on a level whose rounds hold more and more, or nothing.
    std::string growth() const;
    std::size_t countLevels() const { return levels.size(); }
    /// Levels of the list.
    std::size_t countListed() const { return names.size(); }
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

    std::map<std::pair<int, std::size_t>, std::string> names;
    std::map<std::string, Level> levels;
    Level* current = nullptr;
};
