// What a player's broken data does: one box that names the file and the fault, and an orderly end; or, where something
// is merely missing, a game without it.

#include "core/module_manager.h"
#include "core/team.h"
#include "core/team_manager.h"
#include "game/worm.h"
#include "platform/headless/headless.h"
#include "support/play.h"
#include "support/test_data.h"
#include "support/world_hash.h"

#include <gtest/gtest.h>

namespace {

class BadData : public testing::Test {
protected:
    BadData() { data.writeFlatLevel({{"A", {"A1"}, 1}, {"B", {"B1"}, 1}}); }

    /// Starts the game, which must refuse the data with one box that holds all these words.
    static void expectRefusal(const std::vector<std::string>& words) {
        const int status = playGame([]() -> Script {
            co_await frames(1);
            ADD_FAILURE() << "the game started";
        });
        EXPECT_LT(status, 0);
        EXPECT_EQ(headless::openHandles(), headless::OpenHandles{});
        ASSERT_EQ(headless::messageBoxes().size(), 1u);
        const headless::ShownBox& box = headless::messageBoxes()[0];
        EXPECT_EQ(box.caption, "ERROR");
        for (const std::string& word : words)
            EXPECT_NE(box.text.find(word), std::string::npos) << box.text << " lacks " << word;
    }
    /// Starts the game, which must play on with these worms.
    static void expectPlay(const std::vector<std::string>& worms) {
        const int status = playGame([&]() -> Script {
            co_await frames(30);
            for (const std::string& name : worms)
                EXPECT_NE(world::worm(name), nullptr) << name;
            EXPECT_NE(world::activeWorm(), nullptr);
        });
        EXPECT_EQ(status, 0);
        EXPECT_TRUE(headless::messageBoxes().empty());
    }

    TestData data;
};

TEST_F(BadData, TheLevelList) {
    data.remove("level/levels.lev");
    expectRefusal({"level/levels.lev"});
    for (const char* const list : {"", "0", "-4 flat", "many flat"}) {
        data.write("level/levels.lev", list);
        expectRefusal({"level/levels.lev"});
    }
    data.remove("level/levels.lev");
    std::filesystem::create_directory("level/levels.lev");
    expectRefusal({"level/levels.lev"});
}

TEST_F(BadData, AMissingNameOfTheLevelListRepeatsTheLast) {
    data.write("level/levels.lev", "2000000000 flat");
    expectPlay({"A1", "B1"});
}

TEST_F(BadData, TheLevelFile) {
    data.remove("level/flat.lev");
    expectRefusal({"./level/flat.lev", "opened"});
    for (const char* const level : {"", "x", "-1"}) {
        data.write("level/flat.lev", level);
        expectRefusal({"./level/flat.lev", "number of solids"});
    }
    data.write("level/flat.lev", "2000000000 slab 1 1 1 0 0 0 0 0 0");
    expectRefusal({"./level/flat.lev", "solids"});
    data.write("level/flat.lev", "0");
    expectRefusal({"./level/flat.lev", "ground"});
    data.write("level/flat.lev", "1 nowhere 1 1 1 0 0 0 0 0 0");
    expectRefusal({"./level/flat.lev", "ground"});
}

TEST_F(BadData, AMissingEntryOfALevelRepeatsTheLastCompleteOne) {
    data.write("level/flat.lev", "3\nslab 1 1 1 0 0 0 0 0 0\nslab 1 1 1 0 0 0 9999 5");
    playGame([]() -> Script {
        co_await frames(1);
        EXPECT_EQ(world::landFaces(), 3u * 12u);
        EXPECT_LT(theModuleManager->getSceneRoot()->getWorldBounds().max.x, 5000.0f);
    });
}

TEST_F(BadData, AMissingSolidIsSkipped) {
    data.write("level/flat.lev", "2 nowhere 1 1 1 0 0 0 0 0 0 slab 1 1 1 0 0 0 0 0 0");
    expectPlay({"A1", "B1"});
    data.write("csg/broken.csg", "1 4 0 0 0 0 0 1 0");
    data.write("level/flat.lev", "2 broken 1 1 1 0 0 0 0 0 0 slab 1 1 1 0 0 0 0 0 0");
    expectPlay({"A1", "B1"});
}

TEST_F(BadData, TheTeamList) {
    data.remove("teams/teams.tm");
    expectRefusal({"teams/teams.tm", "opened"});
    for (const char* const list : {"", "0", "-1", "two A 1 B 1"}) {
        data.write("teams/teams.tm", list);
        expectRefusal({"teams/teams.tm", "no team"});
    }
    data.write("teams/teams.tm", "2000000000 A 1");
    expectRefusal({"teams/teams.tm", "teams"});
    data.write("teams/teams.tm", "1 A 2000000000");
    expectRefusal({"teams/teams.tm", "A", "worms"});
}

TEST_F(BadData, WormsWithoutNames) {
    data.remove("teams/B.tm");
    expectRefusal({"teams/B.tm", "names"});
    data.write("teams/B.tm", "0 1 1 1");
    expectRefusal({"teams/B.tm", "names"});
}

TEST_F(BadData, ATeamWithoutWormsTakesNoPart) {
    data.writeTeams({{"A", {"A1"}, 1}, {"Empty", {"E"}, 0}, {"B", {"B1"}, 1}});
    playGame([]() -> Script {
        co_await frames(3);
        EXPECT_EQ(theModuleManager->getTeamManager()->getTeamCount(), 2);
    });
}

TEST_F(BadData, FewerNamesThanWormsAreUsedAgain) {
    data.writeTeams({{"A", {"X", "Y"}, 3}, {"B", {"B1"}, 1}});
    playGame([]() -> Script {
        co_await frames(3);
        const auto& worms = theModuleManager->getTeamManager()->getTeams()[0]->getWorms();
        EXPECT_EQ(worms.size(), 3u);
        std::string names;
        for (const Worm* const worm : worms)
            names += worm->getWormName();
        EXPECT_EQ(names, "XYX");
    });
}

TEST_F(BadData, ACraterFileThatWillNotLoadCutsNothingAndDoesTheRest) {
    for (const char* const contents : {"", "nonsense", "1 3 0 0 0 0 0"}) {
        data.write("csg/sphere.csg", contents);
        playGame([]() -> Script {
            co_await frames(60);
            const Worm* const shooter = world::activeWorm();
            co_await takeWeapon(0);
            co_await aimAt(-1.5f, 0.0f);
            co_await pressFire(1);
            co_await until([] { return world::countNodes("explosion") == 1; }, 100);
            EXPECT_EQ(world::landFaces(), 12u);
            EXPECT_LT(shooter->getHealth(), 100.0f);
        });
    }
}

} // namespace
