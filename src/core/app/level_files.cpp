#include "core/app/level_files.h"

#include <algorithm>
#include <utility>

namespace {

using Faults = std::vector<TextFault>;

std::string quoted(const std::string& name) {
    return '"' + name + '"';
}

std::string moreThan(int limit, const char* what) {
    return "more than " + std::to_string(limit) + " " + what;
}

/// Adds what the reader met, when it has just failed, as the reason why something cannot be read.
void addFailure(const TextReader& in, const std::string& what, Faults& faults) {
    if (in.hasFailed())
        faults.push_back({in.getFault().line, what + " cannot be read (" + in.getFault().text + ")"});
}

/// Adds a fault when the text goes on behind what was read of it.
void addRest(TextReader& in, const std::string& what, Faults& faults) {
    if (!in.hasFailed() && !in.isAtEnd())
        faults.push_back({in.line(), "what follows " + what + " is not read"});
}

/// What of an entry the read that failed was about.
std::string readSolid(TextReader& in, SolidEntry& entry) {
    if (!in.read(entry.name))
        return "the name of a solid";
    struct Triple {
        const char* what;
        double* numbers;
    };
    for (const Triple& triple :
         {Triple{"scale", entry.scale}, {"rotation", entry.rotation}, {"position", entry.translation}})
        for (int axis = 0; axis < 3; ++axis)
            if (!in.read(triple.numbers[axis]))
                return std::string(triple.what) + " " + "xyz"[axis] + " of " + quoted(entry.name);
    return {};
}

/// Reads `count` names; a name that is missing repeats the last one read, up to a limit.
void readNames(TextReader& in, int count, std::vector<std::string>& names, Faults& faults) {
    std::string name;
    for (int i = 0; i < count; ++i) {
        const bool failedBefore = in.hasFailed();
        const bool good = in.read(name);
        if (!good && !failedBefore)
            addFailure(in, "name " + std::to_string(i + 1) + " of " + std::to_string(count), faults);
        if (!good && (i >= mostRepeatedNames || name.empty()))
            return;
        names.push_back(name);
    }
}

/// Reads the count that a list of names begins with.
int readCount(TextReader& in, const std::string& what, Faults& faults) {
    int count = 0;
    if (!in.read(count))
        addFailure(in, what, faults);
    return count;
}

} // namespace

LevelText readLevelText(std::string text) {
    LevelText level;
    TextReader in(std::move(text));
    const int firstLine = in.line();
    const int count = readCount(in, "the number of solids", level.faults);
    if (in.hasFailed())
        return level;
    if (count < 0 || count > mostSolids) {
        level.faults.push_back(
            {firstLine, count < 0 ? "the number of solids is negative" : moreThan(mostSolids, "solids")});
        return level;
    }
    SolidEntry entry;
    for (int i = 0; i < count; ++i) {
        SolidEntry next = entry;
        if (!in.hasFailed()) {
            next.line = in.line();
            addFailure(in, readSolid(in, next), level.faults);
        }
        if (!in.hasFailed())
            entry = std::move(next);
        if (!entry.name.empty())
            level.solids.push_back(entry);
    }
    addRest(in, "the " + std::to_string(count) + " solids", level.faults);
    level.usable = true;
    return level;
}

TeamListText readTeamListText(std::string text) {
    TeamListText list;
    TextReader in(std::move(text));
    const int firstLine = in.line();
    const int count = readCount(in, "the number of teams", list.faults);
    if (count <= 0 || count > mostTeams) {
        if (!in.hasFailed())
            list.faults.push_back(
                {firstLine, count > mostTeams ? moreThan(mostTeams, "teams") : "the team list names no team"});
        return list;
    }
    TeamEntry entry;
    int worms = 0;
    for (int i = 0; i < count; ++i) {
        const bool failedBefore = in.hasFailed();
        std::string what = "the name of team " + std::to_string(i + 1);
        bool good = in.read(entry.name);
        if (good) {
            what = "the number of worms of team " + quoted(entry.name);
            good = in.read(entry.wormCount);
        }
        if (!good && !failedBefore)
            addFailure(in, what, list.faults);
        if (entry.name.empty())
            return list;
        if (entry.wormCount > mostWorms) {
            list.faults.push_back({in.line(), "team " + quoted(entry.name) + " has " + moreThan(mostWorms, "worms")});
            return list;
        }
        worms += std::max(entry.wormCount, 0);
        list.teams.push_back(entry);
    }
    if (worms > mostWormsInAll) {
        list.faults.push_back({0, "the teams have " + moreThan(mostWormsInAll, "worms")});
        return list;
    }
    addRest(in, "the " + std::to_string(count) + " teams", list.faults);
    list.usable = true;
    return list;
}

TeamText readTeamText(std::string text, const std::array<float, 3>& colour) {
    TeamText team;
    team.colour = colour;
    TextReader in(std::move(text));
    const int count = readCount(in, "the number of names", team.faults);
    readNames(in, count, team.wormNames, team.faults);
    const bool failedBefore = in.hasFailed();
    bool good = !failedBefore;
    for (float& component : team.colour)
        good = good && in.read(component);
    if (!failedBefore)
        addFailure(in, "the team's colour", team.faults);
    addRest(in, "the team's colour", team.faults);
    return team;
}

LevelListText readLevelListText(std::string text) {
    LevelListText list;
    TextReader in(std::move(text));
    const int count = readCount(in, "the number of levels", list.faults);
    readNames(in, count, list.names, list.faults);
    addRest(in, "the " + std::to_string(count) + " levels", list.faults);
    return list;
}
