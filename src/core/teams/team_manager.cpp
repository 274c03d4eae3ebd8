#include "core/teams/team_manager.h"

#include "core/base/expect.h"
#include "core/services/module_manager.h"
#include "core/teams/team.h"

#include <algorithm>

TeamManager::TeamManager() {
    theModuleManager->setTeamManager(this);
}

TeamManager::~TeamManager() {
    for (Team* const team : teams)
        delete team;
    teams.clear();
}

void TeamManager::addTeam(Team* team) {
    expect(team != nullptr && std::find(teams.begin(), teams.end(), team) == teams.end());
    teams.push_back(team);
}

Team* TeamManager::nextTeam() {
    if (teams.empty())
        return nullptr;
    std::rotate(teams.begin(), teams.begin() + 1, teams.end());
    return teams.back();
}

void TeamManager::startTurn() {
    if (!teams.empty())
        teams.back()->nextWorm();
}

void TeamManager::removeTeam(Team* team) {
    const auto found = std::find(teams.begin(), teams.end(), team);
    if (found == teams.end())
        return;
    teams.erase(found);
    delete team;
}
