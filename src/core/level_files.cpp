#include "core/level_files.h"

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
    in.read(entry.name);
    if (in.hasFailed())
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
    in.read(count);
    addFailure(in, what, faults);
    return count;
}

} // namespace

bool readLevelText(std::string text, std::vector<SolidEntry>& solids, std::vector<TextFault>& faults) {
    TextReader in(std::move(text));
    const int firstLine = in.line();
    const int count = readCount(in, "the number of solids", faults);
    if (in.hasFailed())
        return false;
    if (count < 0 || count > mostSolids) {
        faults.push_back({firstLine, count < 0 ? "the number of solids is negative" : moreThan(mostSolids, "solids")});
        return false;
    }
    SolidEntry entry;
    for (int i = 0; i < count; ++i) {
        SolidEntry next = entry;
        if (!in.hasFailed()) {
            next.line = in.line();
            addFailure(in, readSolid(in, next), faults);
        }
        if (!in.hasFailed())
            entry = std::move(next);
        if (!entry.name.empty())
            solids.push_back(entry);
    }
    addRest(in, "the " + std::to_string(count) + " solids", faults);
    return true;
}

bool readTeamListText(std::string text, std::vector<TeamEntry>& teams, std::vector<TextFault>& faults) {
    TextReader in(std::move(text));
    const int firstLine = in.line();
    const int count = readCount(in, "the number of teams", faults);
    if (count <= 0 || count > mostTeams) {
        if (!in.hasFailed())
            faults.push_back(
                {firstLine, count > mostTeams ? moreThan(mostTeams, "teams") : "the team list names no team"});
        return false;
    }
    TeamEntry entry;
    int worms = 0;
    for (int i = 0; i < count; ++i) {
        const bool failedBefore = in.hasFailed();
        std::string what = "the name of team " + std::to_string(i + 1);
        if (in.read(entry.name)) {
            what = "the number of worms of team " + quoted(entry.name);
            in.read(entry.wormCount);
        }
        if (!failedBefore)
            addFailure(in, what, faults);
        if (entry.name.empty())
            return false;
        if (entry.wormCount > mostWorms) {
            faults.push_back({in.line(), "team " + quoted(entry.name) + " has " + moreThan(mostWorms, "worms")});
            return false;
        }
        worms += std::max(entry.wormCount, 0);
        teams.push_back(entry);
    }
    if (worms > mostWormsInAll) {
        faults.push_back({0, "the teams have " + moreThan(mostWormsInAll, "worms")});
        return false;
    }
    addRest(in, "the " + std::to_string(count) + " teams", faults);
    return true;
}

void readTeamText(std::string text, std::vector<std::string>& wormNames, float& r, float& g, float& b,
                  std::vector<TextFault>& faults) {
    TextReader in(std::move(text));
    const int count = readCount(in, "the number of names", faults);
    readNames(in, count, wormNames, faults);
    const bool failedBefore = in.hasFailed();
    in.read(r);
    in.read(g);
    in.read(b);
    if (!failedBefore)
        addFailure(in, "the team's colour", faults);
    addRest(in, "the team's colour", faults);
}

void readLevelListText(std::string text, std::vector<std::string>& names, std::vector<TextFault>& faults) {
    TextReader in(std::move(text));
    const int count = readCount(in, "the number of levels", faults);
    readNames(in, count, names, faults);
    addRest(in, "the " + std::to_string(count) + " levels", faults);
}
