#include "core/level_files.h"

#include "core/text_reader.h"

#include <algorithm>
#include <utility>

namespace {

void readSolid(TextReader& in, SolidEntry& entry) {
    in.read(entry.name);
    for (double* const triple : {entry.scale, entry.rotation, entry.translation})
        for (int axis = 0; axis < 3; ++axis)
            in.read(triple[axis]);
}

/// Reads `count` names; a name that is missing repeats the last one read, up to a limit.
void readNames(TextReader& in, int count, std::vector<std::string>& names) {
    std::string name;
    for (int i = 0; i < count; ++i) {
        if (!in.read(name) && (i >= mostRepeatedNames || name.empty()))
            return;
        names.push_back(name);
    }
}

std::string moreThan(int limit, const char* what) {
    return "more than " + std::to_string(limit) + " " + what;
}

} // namespace

bool readLevelText(std::string text, std::vector<SolidEntry>& solids, std::string& fault) {
    TextReader in(std::move(text));
    int count = 0;
    if (!in.read(count) || count < 0) {
        fault = "the number of solids cannot be read";
        return false;
    }
    if (count > mostSolids) {
        fault = moreThan(mostSolids, "solids");
        return false;
    }
    SolidEntry entry;
    for (int i = 0; i < count; ++i) {
        SolidEntry next = entry;
        readSolid(in, next);
        if (!in.hasFailed())
            entry = std::move(next);
        if (!entry.name.empty())
            solids.push_back(entry);
    }
    return true;
}

bool readTeamListText(std::string text, std::vector<TeamEntry>& teams, std::string& fault) {
    TextReader in(std::move(text));
    int count = 0;
    if (!in.read(count) || count <= 0 || count > mostTeams) {
        fault = count > mostTeams ? moreThan(mostTeams, "teams") : std::string("the team list names no team");
        return false;
    }
    TeamEntry entry;
    int worms = 0;
    for (int i = 0; i < count; ++i) {
        in.read(entry.name);
        in.read(entry.wormCount);
        if (entry.name.empty()) {
            fault = "the name of a team is missing";
            return false;
        }
        if (entry.wormCount > mostWorms) {
            fault = "team " + entry.name + " has " + moreThan(mostWorms, "worms");
            return false;
        }
        worms += std::max(entry.wormCount, 0);
        teams.push_back(entry);
    }
    if (worms > mostWormsInAll) {
        fault = "the teams have " + moreThan(mostWormsInAll, "worms");
        return false;
    }
    return true;
}

void readTeamText(std::string text, std::vector<std::string>& wormNames, float& r, float& g, float& b) {
    TextReader in(std::move(text));
    int count = 0;
    in.read(count);
    readNames(in, count, wormNames);
    in.read(r);
    in.read(g);
    in.read(b);
}

void readLevelListText(std::string text, std::vector<std::string>& names) {
    TextReader in(std::move(text));
    int count = 0;
    in.read(count);
    readNames(in, count, names);
}
