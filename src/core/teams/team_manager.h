#pragma once

#include <vector>

class Team;

/// The teams of a round in turn order; the last of the list has the turn. Owns the teams. Registers itself.
class TeamManager {
public:
    TeamManager();
    ~TeamManager();
    TeamManager(const TeamManager&) = delete;
    TeamManager& operator=(const TeamManager&) = delete;

    /// Appends a team and takes ownership of it.
    void addTeam(Team* team);
    int getTeamCount() const { return static_cast<int>(teams.size()); }
    const std::vector<Team*>& getTeams() const { return teams; }
    /// Passes the turn to the first team of the list, which becomes the last; null without teams.
    Team* nextTeam();
    /// Begins the round with the last team's next worm; nothing happens without teams.
    void startTurn();
    /// Destroys a team of the list; nothing happens to any other.
    void removeTeam(Team* team);

private:
    std::vector<Team*> teams;
};
