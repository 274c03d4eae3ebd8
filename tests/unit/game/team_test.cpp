#include "core/teams/team.h"

#include "core/scene/scene_node.h"
#include "core/services/module_manager.h"
#include "core/teams/team_manager.h"
#include "csg/land/csg_object.h"
#include "game/armoury/armoury.h"
#include "game/play/worm.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

/// Deadly to the first three worms that it sees.
class Reaper : public SceneNode {
public:
    Reaper() : SceneNode("reaper") {}

    void update() override {
        theModuleManager->getSceneRoot()->forEachChild([this](SceneNode* node) {
            if (node->asWorm() != nullptr && left-- > 0)
                node->getDamageableNode()->applyDamage(1000.0f);
        });
    }

private:
    int left = 3;
};

TEST(Team, AWormMayEndInTheFrameInWhichItIsDropped) {
    const TestData data;
    const TestServices services;
    data.writeFlatLevel({});
    new TeamManager; // registers itself
    auto* const land = new csgObject;
    ASSERT_TRUE(land->load("./csg/slab"));
    SceneNode* const root = theModuleManager->getSceneRoot();
    root->addChild(land);
    root->addChild(new Reaper);
    const BoundingBox box = land->getLocalBounds();
    const Team team("team", &box, 1, 1, 1, {"a", "b"}, 2, issueWeapons);
    EXPECT_EQ(team.getWorms().size(), 2u) << "others are dropped in their place";
    std::vector<Worm*> standing;
    root->forEachChild([&](SceneNode* node) {
        if (node->asWorm() != nullptr)
            standing.push_back(node->asWorm());
    });
    EXPECT_EQ(standing, std::vector<Worm*>(team.getWorms().begin(), team.getWorms().end()));
}

} // namespace
