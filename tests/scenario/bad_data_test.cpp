// What a player's broken data does: one box that names the file and the fault, and an orderly end; or, where something
// is merely missing, a line on stderr and a game without it.

#include "game/effects/explosion.h"
#include "support/scenario.h"

namespace {

class BadData : public FlatLevel {};

struct Slip {
    const char* file;
    const char* contents; ///< null: the file is missing
    const char* said;     ///< all of the box or of stderr, or the beginning of it
    const char* worms = "A1 B1";
    std::size_t solids = 1;
};

/// The data with a slip in them, and what the program says on stderr while it lives.
struct SlippedData : TestData {
    explicit SlippedData(const Slip& slip) {
        writeFlatLevel({{"A", {"A1"}, 1}, {"B", {"B1"}, 1}});
        write("csg/broken.csg", "1\n4 0 0 0 0 0 1 0");
        if (slip.contents == nullptr)
            remove(slip.file);
        else
            write(slip.file, slip.contents);
        testing::internal::CaptureStderr();
    }
};

TEST(BadDataFiles, WhatLeavesNothingToPlayIsRefusedInOneBox) {
    for (const Slip& slip : std::initializer_list<Slip>{
             {"level/levels.lev", nullptr, "level/levels.lev: the level list is missing or names no level"},
             {"level/levels.lev", "", "level/levels.lev:1: the number of levels cannot be read (the file ends)"},
             {"level/levels.lev", "-4 flat", "level/levels.lev:1: what follows the -4 levels is not read"},
             {"level/flat.lev", nullptr, "./level/flat.lev: the level file cannot be opened"},
             {"level/flat.lev", "\nx", "./level/flat.lev:2: the number of solids cannot be read (\"x\" is no number)"},
             {"level/flat.lev", "-1", "./level/flat.lev:1: the number of solids is negative"},
             {"level/flat.lev", "2000000000 slab 1 1 1 0 0 0 0 0 0", "./level/flat.lev:1: more than 1000 solids"},
             {"level/flat.lev", "0", "./level/flat.lev: no worm found ground to stand on"},
             {"level/flat.lev", "\xFF\xFE",
              "./level/flat.lev:1: the number of solids cannot be read (the file is UTF-16"},
             // What keeps the worms from finding ground is named, not that they find none.
             {"level/flat.lev", "1 nowhere 1 1 1 0 0 0 0 0 0", "./csg/nowhere.csg: the solid cannot be opened"},
             {"level/flat.lev", "1 slab\n1 1 1 0 0 0 0 -2e6 0",
              "./level/flat.lev:1: \"slab\" is left out: it has a number beyond a million"},
             {"level/flat.lev", "1\nslab 1 1 1 0 0 0 0 0 999999",
              "./level/flat.lev:2: \"slab\" is left out: it is placed out of reach"},
             {"level/flat.lev", "1 broken 1 1 1 0 0 0 0 0 0", "./csg/broken.csg:2: part 0: vertex 1: z is missing"},
             {"teams/teams.tm", nullptr, "teams/teams.tm: the team list cannot be opened"},
             {"teams/teams.tm", "0", "teams/teams.tm:1: the team list names no team"},
             {"teams/teams.tm", "\ntwo A 1 B 1",
              "teams/teams.tm:2: the number of teams cannot be read (\"two\" is no number)"},
             {"teams/teams.tm", "2\nThe Bog 1\nB 1",
              "teams/teams.tm:2: the number of worms of team \"The\" cannot be read (\"Bog\" is no number)"},
             {"teams/teams.tm", "2000000000 A 1", "teams/teams.tm:1: more than 100 teams"},
             {"teams/teams.tm", "1\nA 101", "teams/teams.tm:2: team \"A\" has more than 100 worms"},
             {"teams/B.tm", nullptr, "teams/B.tm: the team file cannot be opened"},
             {"teams/B.tm", "0 1 1 1", "teams/B.tm: no names for the 1 worms of the team"}}) {
        const SlippedData data(slip);
        EXPECT_TRUE(startInVain().starts_with(slip.said)) << slip.said;
        EXPECT_EQ(headless::messageBoxes().size(), 1u);
        testing::internal::GetCapturedStderr();
    }
}

TEST(BadDataFiles, ASlipIsSaidOnceWithItsPlaceAndTheRestIsPlayed) {
    for (const Slip& slip : std::initializer_list<Slip>{
             {"level/levels.lev", "2000000000 flat",
              "level/levels.lev:1: name 2 of 2000000000 cannot be read (the file ends)\n"},
             {"level/levels.lev", "6 gone gone gone gone flat gone",
              "./level/gone.lev: the level file cannot be opened\n"},
             {"level/flat.lev", "2\nslab 1 1 1 0 0 0 0 0 0\nslab 1 1,5 1 0 0 0 0 0 0",
              "./level/flat.lev:3: scale z of \"slab\" cannot be read (\"1,5\" is no number)\n", "A1 B1", 2},
             {"level/flat.lev", "1\nslab 1 1 1 0 0 0 0 0 0 0\n",
              "./level/flat.lev:2: what follows the 1 solids is not read\n"},
             {"level/flat.lev", "3\nslab 1 1 1 0 0 0 0 0 0\n# the second\nslab 1 1 1 0 0 0 9999 0",
              "./level/flat.lev:3: scale x of \"#\" cannot be read (\"the\" is no number)\n", "A1 B1", 3},
             {"level/flat.lev", "2 slab 1 1 1 0 0 0 0 0 0\n\nslab 1 1 1 0 0 0 9999 0",
              "./level/flat.lev:3: position z of \"slab\" cannot be read (the file ends)\n", "A1 B1", 2},
             {"level/flat.lev", "2 nowhere 1 1 1 0 0 0 0 0 0 slab 1 1 1 0 0 0 0 0 0",
              "./csg/nowhere.csg: the solid cannot be opened\n"},
             {"level/flat.lev", "3 slab 1 1 1 0 0 0 0 0 0 broken 1 1 1 0 0 0 0 0 0 slab 1 1 1 0 0 0 999999 0 0",
              "./csg/broken.csg:2: part 0: vertex 1: z is missing\n"
              "./level/flat.lev:1: \"slab\" is left out: it is placed out of reach\n"},
             {"teams/teams.tm", "3 B 1 Empty 0 A 1", "", "B1 A1"},
             {"teams/A.tm", "1 A1\n#ff8040",
              "teams/A.tm:2: the team's colour cannot be read (\"#ff8040\" is no number)\n"},
             {"teams/A.tm", "2 A1\n0.25 0.5 1", "teams/A.tm:2: the team's colour cannot be read (the file ends)\n"},
             {"sound/music/pirate1.wav", "OggS", "sound/music/pirate1.wav: not a WAV file\n"}}) {
        const SlippedData data(slip);
        playRound([&]() -> Script {
            for (int round = 0; round < 2; ++round) {
                std::string worms;
                for (const Team* const team : teams())
                    for (const Worm* const worm : team->getWorms())
                        worms += (worms.empty() ? "" : " ") + worm->getWormName();
                EXPECT_EQ(worms, slip.worms);
                EXPECT_EQ(world::landFaces(), 12 * slip.solids);
                EXPECT_LT(theModuleManager->getSceneRoot()->getWorldBounds().max.x, 5000.0f);
                kill(waitingWorm());
                co_await frames(2);
                headless::tapKey(VK_RETURN);
                co_await frames(3);
            }
        });
        EXPECT_EQ(testing::internal::GetCapturedStderr(), slip.said);
    }
}

TEST_F(BadData, NamesAreUtf8UsedAgainAndMarksOfEncodingsAreKnown) {
    const std::string mark = "\xEF\xBB\xBF";
    data.write("level/levels.lev", mark + "1 flat");
    data.write("level/flat.lev", mark + "1 slab 1 1 1 0 0 0 0 0 0");
    data.write("teams/teams.tm", mark + "2 A 5 B 1");
    data.write("teams/A.tm", mark + "3 \xC3\x85sa Lu\xC5\x82 R\xF6k 1 0.5 0.25");
    playRound([]() -> Script {
        std::string names;
        for (const Worm* const worm : teams()[0]->getWorms())
            names += worm->getWormName() + " ";
        EXPECT_EQ(names, "\xC5sa Lu? R\xF6k \xC5sa Lu? ");
        EXPECT_EQ(teams()[0]->getColour(), (std::array<float, 4>{1.0f, 0.5f, 0.25f, 1.0f}));
        co_return;
    });
}

TEST_F(BadData, ACraterFileThatWillNotLoadCutsNothingAndDoesTheRest) {
    for (const char* const contents : {"", "nonsense", "1 3 0 0 0 0 0"}) {
        data.write("csg/sphere.csg", contents);
        playRound([]() -> Script {
            const Worm* const shooter = world::activeWorm();
            co_await fire(0, -1.5f);
            co_await until([] { return nodesOf<Explosion>().size() == 1; }, 100);
            EXPECT_EQ(world::landFaces(), 12u);
            EXPECT_LT(shooter->getHealth(), 100.0f);
        });
    }
}

} // namespace
