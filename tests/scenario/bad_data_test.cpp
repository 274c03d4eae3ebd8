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
    // What keeps the worms from finding ground is named, not that they find none.
    data.write("level/flat.lev", "1\nnowhere 1 1 1 0 0 0 0 0 0");
    expectRefusal({"./csg/nowhere.csg: the solid cannot be opened"});
    data.write("level/flat.lev", "1 slab\n1 1 1 0 0 0 0 -2e6 0");
    expectRefusal({"./level/flat.lev:1: \"slab\"", "million"});
    data.write("level/flat.lev", std::string("1\nno") + '\0' + "where 1 1 1 0 0 0 0 0 0");
    expectRefusal({"./csg/no?where.csg: the solid cannot be opened"});
    data.write("csg/broken.csg", "1\n4 0 0 0 0 0 1 0");
    data.write("level/flat.lev", "1 broken 1 1 1 0 0 0 0 0 0");
    expectRefusal({"./csg/broken.csg:2: part 0: vertex 1: z is missing"});
}

TEST_F(BadData, AMissingEntryOfALevelRepeatsTheLastCompleteOne) {
    data.write("level/flat.lev", "3\nslab 1 1 1 0 0 0 0 0 0\nslab 1 1 1 0 0 0 9999 5");
    playGame([]() -> Script {
        co_await frames(1);
        EXPECT_EQ(world::landFaces(), 3u * 12u);
        EXPECT_LT(theModuleManager->getSceneRoot()->getWorldBounds().max.x, 5000.0f);
    });
}

/// What the program says on stderr while it lives.
class Said {
public:
    Said() { testing::internal::CaptureStderr(); }
    std::string text() { return testing::internal::GetCapturedStderr(); }
};

TEST_F(BadData, ASlipIsSaidOnceWithItsPlaceAndTheRestIsPlayed) {
    struct Slip {
        const char* file;
        std::string_view contents;
        const char* said;
    };
    const Slip slips[] = {
        {"level/flat.lev", "2\nslab 1 1 1 0 0 0 0 0 0\nslab 1 1,5 1 0 0 0 0 0 0",
         "./level/flat.lev:3: scale z of \"slab\" cannot be read (\"1,5\" is no number)\n"},
        {"level/flat.lev", "1\nslab 1 1 1 0 0 0 0 0 0 0\n",
         "./level/flat.lev:2: what follows the 1 solids is not read\n"},
        {"level/flat.lev", "2\nslab 1 1 1 0 0 0 0 0 0\n# the second\nslab 1 1 1 0 0 0 0 0 0",
         "./level/flat.lev:3: scale x of \"#\" cannot be read (\"the\" is no number)\n"},
        {"level/flat.lev", "2 slab 1 1 1 0 0 0 0 0 0\n\nslab 1 1 1 0 0 0 0 0",
         "./level/flat.lev:3: position z of \"slab\" cannot be read (the file ends)\n"},
        {"teams/A.tm", "1 A1\n#ff8040", "teams/A.tm:2: the team's colour cannot be read (\"#ff8040\" is no number)\n"},
        {"teams/A.tm", "2 A1\n0.25 0.5 1", "teams/A.tm:2: the team's colour cannot be read (the file ends)\n"},
    };
    for (const Slip& slip : slips) {
        const TestData fresh;
        fresh.writeFlatLevel({{"A", {"A1"}, 1}, {"B", {"B1"}, 1}});
        fresh.write(slip.file, slip.contents);
        Said said;
        playGame([]() -> Script {
            co_await frames(1);
            EXPECT_GT(world::landFaces(), 0u);
            world::worm("B1")->applyDamage(1000.0f);
            co_await frames(2);
            headless::tapKey(VK_RETURN);
            co_await frames(3);
            EXPECT_EQ(theModuleManager->getTeamManager()->getTeamCount(), 2) << "the second round";
        });
        EXPECT_TRUE(headless::messageBoxes().empty());
        EXPECT_EQ(said.text(), slip.said);
    }
}

TEST_F(BadData, ALevelThatCannotBePlayedIsStruckFromTheList) {
    data.write("level/levels.lev", "3 nowhere flat broken");
    data.write("level/broken.lev", "many");
    for (unsigned seed = 1000; seed < 1012; ++seed) {
        PlaySettings settings;
        settings.startTick = seed;
        const int status = playGame(
            []() -> Script {
                for (int round = 0; round < 3; ++round) {
                    co_await frames(3);
                    EXPECT_NE(world::worm("A1"), nullptr);
                    world::worm("A1")->applyDamage(1000.0f);
                    co_await frames(2);
                    headless::tapKey(VK_RETURN);
                }
                co_await frames(3);
            },
            settings);
        EXPECT_EQ(status, 0);
        EXPECT_TRUE(headless::messageBoxes().empty());
    }
    data.write("level/flat.lev", "2,5");
    data.remove("level/nowhere.lev");
    expectRefusal({"level/"});
}

TEST_F(BadData, NamesAreUtf8AndMarksOfEncodingsAreKnown) {
    const std::string mark = "\xEF\xBB\xBF";
    data.write("level/levels.lev", mark + "1 flat");
    data.write("level/flat.lev", mark + "1 slab 1 1 1 0 0 0 0 0 0");
    data.write("teams/teams.tm", mark + "2 A 3 B 1");
    data.write("teams/A.tm", mark + "3 \xC3\x85sa Lu\xC5\x82 R\xF6k 1 0.5 0.25");
    expectPlay({"\xC5sa", "Lu?", "R\xF6k", "B1"});
    data.write("level/flat.lev", std::string_view("\xFF\xFE"
                                                  "1\0",
                                                  4));
    expectRefusal({"./level/flat.lev:1: ", "UTF-16"});
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
    for (const char* const list : {"0", "-1"}) {
        data.write("teams/teams.tm", list);
        expectRefusal({"teams/teams.tm:1: ", "no team"});
    }
    data.write("teams/teams.tm", "");
    expectRefusal({"teams/teams.tm:1: the number of teams cannot be read (the file ends)"});
    data.write("teams/teams.tm", "\ntwo A 1 B 1");
    expectRefusal({"teams/teams.tm:2: the number of teams cannot be read (\"two\" is no number)"});
    data.write("teams/teams.tm", "2\nThe Bog 1\nB 1");
    expectRefusal({"teams/teams.tm:2: the number of worms of team \"The\" cannot be read (\"Bog\" is no number)"});
    data.write("teams/teams.tm", "2000000000 A 1");
    expectRefusal({"teams/teams.tm", "teams"});
    data.write("teams/teams.tm", "1 A 2000000000");
    expectRefusal({"teams/teams.tm", "A", "worms"});
}

TEST_F(BadData, WormsWithoutNames) {
    data.remove("teams/B.tm");
    expectRefusal({"teams/B.tm", "opened"});
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
