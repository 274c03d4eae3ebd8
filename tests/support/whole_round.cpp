#include "support/whole_round.h"

#include "core/module_manager.h"
#include "core/team.h"
#include "core/team_manager.h"
#include "game/worm.h"
#include "platform/headless/headless.h"
#include "platform/win32.h"
#include "support/play.h"
#include "support/world_hash.h"

#include <cmath>

namespace {

constexpr float downward = -1.5f;

/// The yaw that points from the active worm to the nearest worm of another team.
float yawToNearestEnemy(const Worm& shooter) {
    const Worm* nearest = nullptr;
    float best = 1e9f;
    for (const Team* const team : theModuleManager->getTeamManager()->getTeams()) {
        if (team == shooter.getTeam())
            continue;
        for (const Worm* const worm : team->getWorms()) {
            const float distance = (worm->getWorldPosition() - shooter.getWorldPosition()).length();
            if (distance < best) {
                best = distance;
                nearest = worm;
            }
        }
    }
    if (nearest == nullptr)
        return 0.0f;
    const Vector3 offset = nearest->getWorldPosition() - shooter.getWorldPosition();
    // Yaw grows clockwise: the aim is +Z turned by -yaw about Y.
    return std::atan2(-offset.x, offset.z);
}

Script roundScript(RoundRecord& record, unsigned turnLimit) {
    co_await frames(60);
    TeamManager* const teams = theModuleManager->getTeamManager();
    const Team* const losing = world::activeWorm()->getTeam();
    while (teams->getTeamCount() > 1 && record.turns < turnLimit) {
        const Worm* const shooter = world::activeWorm();
        if (shooter == nullptr)
            break;
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
    headless::recordGl(true);
    co_await frames(1);
    record.bannerShown = isPrinted("Press ENTER for Next Round");
    headless::recordGl(false);
    headless::tapKey(VK_RETURN);
    co_await frames(3);
    record.nextRoundStarted = theModuleManager->getTeamManager()->getTeamCount() > 1;
}

} // namespace

int playWholeRound(unsigned seed, RoundRecord& record, unsigned turnLimit) {
    PlaySettings settings;
    settings.startTick = seed;
    return playGame([&] { return roundScript(record, turnLimit); }, settings);
}
