#pragma once

// Whole games that must end in order, and what stands in them.

#include "core/scene/scene_node.h"
#include "core/services/module_manager.h"
#include "core/teams/team.h"
#include "core/teams/team_manager.h"
#include "game/play/weapon.h"
#include "game/play/worm.h"
#include "platform/headless/headless.h"
#include "support/play.h"
#include "support/test_data.h"
#include "support/world_hash.h"

#include <gtest/gtest.h>

/// Plays a script once the worms stand. The game must leave the desktop as it found it, with nothing used wrongly and
/// nothing said in a box.
void playRound(const std::function<Script()>& script, const PlaySettings& settings = {});

/// Starts a game that must end before its first frame, with an error as its last box; what that says.
std::string startInVain(const PlaySettings& settings = {});

/// The flat level with two teams of one worm, until others are written.
class FlatLevel : public testing::Test {
protected:
    FlatLevel() { data.writeFlatLevel({{"A", {"A1"}, 1}, {"B", {"B1"}, 1}}); }

    TestData data;
};

/// All teams; the last of them has the turn.
inline const std::vector<Team*>& teams() {
    return theModuleManager->getTeamManager()->getTeams();
}
/// A worm of the team whose turn is next.
inline Worm& waitingWorm() {
    return *teams().at(0)->getWorms().at(0);
}
inline void kill(Worm& worm) {
    worm.applyDamage(1000.0f);
}

/// Children of the scene root of a class.
template <class Kind>
std::vector<Kind*> nodesOf() {
    std::vector<Kind*> found;
    for (SceneNode* const node : theModuleManager->getSceneRoot()->getChildren())
        if (auto* const match = dynamic_cast<Kind*>(node))
            found.push_back(match);
    return found;
}
