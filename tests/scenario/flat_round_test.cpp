// Rounds on a flat slab whose top lies at height 10, where every number can be told beforehand.

#include "csg/land/csg_object.h"
#include "game/armoury/projectile.h"
#include "render/camera/camera.h"
#include "render/view/label_node.h"
#include "support/scenario.h"
#include "support/solids.h"

#include <algorithm>
#include <cmath>

namespace {

/// Aims are positive upwards. Straight down: the rocket goes off at the shooter's feet.
constexpr float downward = -1.5f;
/// Up and away over the edge of the slab.
constexpr float upward = 0.8f;

class FlatRound : public FlatLevel {};

TEST_F(FlatRound, TurnsPassFromTeamToTeamAndWithinTheTeams) {
    data.writeTeams({{"A", {"A1", "A2"}, 2}, {"B", {"B1", "B2", "B3"}, 3}, {"C", {"C1"}, 1}});
    std::string order;
    playRound([&]() -> Script {
        for (int turn = 0; turn < 10; ++turn) {
            order += world::activeWorm()->getWormName() + " ";
            co_await fireBazooka(upward, 0.0f, 1);
        }
    });
    EXPECT_EQ(order, "C1 A2 B2 C1 A1 B3 C1 A2 B1 C1 ");
}

TEST_F(FlatRound, ARocketCutsHurtsAndThrowsByItsNumbersAndEndsTheTurn) {
    playRound([]() -> Script {
        Worm* const shooter = world::activeWorm();
        const Worm& other = waitingWorm();
        EXPECT_GT((shooter->getWorldPosition() - other.getWorldPosition()).length(), 30.0f);
        const csgObject& slab = *nodesOf<csgObject>().at(0);
        const double volumeBefore = volumeOf(slab);
        co_await fire(0, downward, 3);
        co_await until([] { return nodesOf<Projectile>().empty(); }, 100);
        // The rocket starts 3 units down the aim and touches the ground with its sphere of radius 1. A ball of radius
        // 10 whose centre lies one unit above a plane: 1/3 pi 81 (30 - 9) cut away, a little less for the polyhedron.
        EXPECT_NEAR(volumeBefore - volumeOf(slab), 1781.3, 80.0);
        EXPECT_EQ(openEdgesOf(slab), 0u);
        EXPECT_NEAR(shooter->getHealth(), 100.0f - (1.0f - 4.0f / 10.0f) * 80.0f, 1.5f);
        EXPECT_TRUE(shooter->jumping);
        EXPECT_NEAR(shooter->jumpVelocity.y, 480.0f, 0.7f); // one frame of decay may have passed
        EXPECT_EQ(other.getHealth(), 100.0f);
        EXPECT_FALSE(other.jumping);

        co_await until([&] { return shooter->weapon->isTurnEnding(); }, 2);
        const unsigned before = headless::frameCount();
        co_await until([&] { return world::activeWorm() == &other; }, 200);
        EXPECT_EQ((headless::frameCount() - before) * 16, 2016u) << "the first frame after the pause of 2000";
        EXPECT_EQ(shooter->weapon, nullptr);
        EXPECT_EQ(shooter->getTeam()->getWeaponEntry(0).ammo, -1);
    });
}

TEST_F(FlatRound, TheLastTeamWinsAndEnterBeginsTheNextRound) {
    data.writeFlatLevel({{"Alder", {"A1"}, 1}, {"Birch", {"B1"}, 1}});
    playRound([]() -> Script {
        const auto expectBanner = [](const char* banner) -> Script {
            headless::recordGl(true);
            co_await frames(1);
            EXPECT_TRUE(isPrinted(banner) && isPrinted("Press ENTER for Next Round")) << banner;
            headless::recordGl(false);
            headless::tapKey(VK_RETURN);
            co_await frames(3);
            EXPECT_EQ(teams().size(), 2u);
            EXPECT_EQ(world::activeWorm()->getWormName(), "B1");
            EXPECT_EQ(world::landFaces(), 12u) << "the next round has fresh land";
        };
        world::activeWorm()->applyDamage(99.0f);
        co_await fire(0, downward);
        co_await until([] { return teams().size() == 1; }, 100);
        EXPECT_GT(world::landFaces(), 12u);
        co_await expectBanner("Team Alder win!");
        co_await frames(60);
        kill(*world::activeWorm());
        kill(waitingWorm());
        co_await frames(2);
        EXPECT_TRUE(teams().empty());
        EXPECT_EQ(theModuleManager->getCamera(), nullptr);
        co_await expectBanner("You are all loosers!");
    });
}

TEST_F(FlatRound, AWormWalksWhereItLooksJumpsAndFallsOffTheEdge) {
    playRound([]() -> Script {
        Worm* const worm = world::activeWorm();
        EXPECT_TRUE(worm->isOnGround());
        // A worm rests 0.005 ellipsoid units above the ground.
        EXPECT_NEAR(worm->getPosition().y, 15.025f, 0.01f);
        const Vector3 start(20.0f, worm->getPosition().y, -30.0f);
        worm->setPosition(start);
        struct Key {
            int key;
            Vector3 way;
        };
        // The aim is +Z turned by -yaw about Y: a yaw of 0.5 looks to the right of +Z, which is -X.
        const Vector3 ahead(-std::sin(0.5f), 0.0f, std::cos(0.5f));
        const Vector3 left(ahead.z, 0.0f, -ahead.x);
        co_await aimAt(0.3f, 0.5f);
        for (const Key& walk : {Key{'W', ahead}, Key{'A', left}, Key{'S', ahead * -1.0f}, Key{'D', left * -1.0f}}) {
            const Vector3 before = worm->getPosition();
            co_await holdKey(walk.key, 63);
            const Vector3 walked = worm->getPosition() - before;
            EXPECT_LT((walked - walk.way * 15.0f).length(), 0.6f) << walk.key; // a second at 15 units per second
            EXPECT_GT(Vector3(worm->getRotationMatrix().data() + 8).dot(walk.way), 0.99f) << walk.key;
        }
        EXPECT_LT((worm->getPosition() - start).length(), 0.5f);
        headless::keyDown('W');
        headless::keyDown('S');
        co_await frames(5);
        const Vector3 before = worm->getPosition();
        co_await frames(10);
        EXPECT_EQ((worm->getPosition() - before).length(), 0.0f);
        headless::keyUp('S');

        co_await holdKey(VK_SPACE, 2);
        const Vector3 off = worm->getPosition();
        EXPECT_TRUE(worm->jumping);
        float highest = 0.0f;
        co_await until([&] {
            highest = std::max(highest, worm->getPosition().y);
            return !worm->jumping;
        });
        // Off at 20 units per second net, slowing by 20 per second per second: 10 units up after one second, and 5
        // units forward in each of the two.
        EXPECT_NEAR(highest - 15.025f, 10.0f, 0.6f);
        EXPECT_NEAR((worm->getPosition() - off).length(), 10.0f, 0.6f);

        co_await until([] { return teams().size() == 1; });
    });
}

TEST_F(FlatRound, TheThreeViewsAndWhatTheyShow) {
    playRound([]() -> Script {
        const Worm* const worm = world::activeWorm();
        const Camera& follow = *worm->getFollowCamera();
        const auto camera = [] { return theModuleManager->getCamera(); };
        EXPECT_EQ(camera(), &follow);
        headless::keyDown('E');
        co_await frames(2);
        EXPECT_EQ(camera(), worm->getOverviewCamera());
        EXPECT_NEAR(worm->getOverviewCamera()->getWorldPosition().y, worm->getWorldPosition().y + 70.0f, 0.01f);
        headless::keyDown('Q');
        co_await frames(2);
        EXPECT_EQ(camera(), worm->getAimCamera()) << "both held: the aim view wins";
        headless::keyUp('E');
        headless::keyUp('Q');
        co_await aimAt(-0.5f, 0.7f);
        EXPECT_EQ(camera(), &follow);
        const Vector3 boom = follow.getWorldPosition() - worm->getWorldPosition();
        EXPECT_LT((boom + worm->getAimDirection() * 45.0f).length(), 0.01f) << "behind and above the worm";
        co_await aimAt(0.5f, 0.7f);
        EXPECT_NEAR(follow.getWorldPosition().y, 11.0f, 0.02f) << "the ground stops it";

        headless::moveMouse(0, 10000);
        co_await frames(3);
        EXPECT_FLOAT_EQ(worm->getPitch(), 1.5f);
        headless::moveMouse(0, -20000);
        co_await frames(3);
        EXPECT_FLOAT_EQ(worm->getPitch(), -1.5f);
        EXPECT_EQ(worm->getLabel().getText(), worm->getWormName() + " 100");
    });
}

TEST_F(FlatRound, ASpentWeaponAndASecondChoiceAfterTheShotAreRefused) {
    playRound([]() -> Script {
        const Worm* const worm = world::activeWorm();
        worm->getTeam()->getWeaponEntry(2).ammo = 0;
        for (const auto& [key, held] : {std::pair{0, 0}, {2, 0}, {1, 1}, {2, 1}, {0, 0}}) {
            co_await takeWeapon(key);
            EXPECT_EQ(worm->weapon->getWeaponIndex(), held) << "the third is spent";
        }
        co_await fire(0, upward);
        EXPECT_EQ(worm->weapon->getShotsFired(), 1u);
        co_await takeWeapon(1);
        EXPECT_EQ(worm->weapon->getWeaponIndex(), 0) << "it has fired in this turn";
    });
}

} // namespace
