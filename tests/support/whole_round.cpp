#include "support/whole_round.h"

#include "core/services/module_manager.h"
#include "core/teams/team.h"
#include "core/teams/team_manager.h"
#include "game/play/worm.h"
#include "support/play.h"
#include "support/world_hash.h"

#include <cmath>

namespace {

constexpr float downward = -1.5f;
constexpr unsigned mostTurns = 200;

/// The yaw that points from the active worm to the nearest worm of another team.
float yawToNearestEnemy(const Worm& shooter) {
    Vector3 nearest(0, 0, 1e9f);
    for (const Team* const team : theModuleManager->getTeamManager()->getTeams()) {
        if (team == shooter.getTeam())
            continue;
        for (const Worm* const worm : team->getWorms()) {
            const Vector3 offset = worm->getWorldPosition() - shooter.getWorldPosition();
            if (offset.length() < nearest.length())
                nearest = offset;
        }
    }
    // Yaw grows clockwise: the aim is +Z turned by -yaw about Y.
    return std::atan2(-nearest.x, nearest.z);
}

Script roundScript(RoundRecord& record) {
    co_await frames(60);
    TeamManager* const teams = theModuleManager->getTeamManager();
    const Team* const losing = world::activeWorm()->getTeam();
    while (teams->getTeamCount() > 1 && record.turns < mostTurns) {
        const Worm* const shooter = world::activeWorm();
        if (shooter->getTeam() == losing && record.turns >= 2)
            co_await fireBazooka(downward, 0.0f, 1);
        else
            co_await fireBazooka(0.4f, yawToNearestEnemy(*shooter), 20);
        ++record.turns;
        // Who has been thrown into the sea dies a little later.
        co_await frames(120);
    }
    record.teamsLeft = teams->getTeamCount();
    record.stateHash = world::stateHash();
}

} // namespace

int playWholeRound(unsigned seed, RoundRecord& record) {
    return playGame([&] { return roundScript(record); }, {.startTick = seed});
}
