// Tries whether the land of a level lets worms shoot at one another: drops the teams again and again, and for every
// worm and every enemy looks for an aim and a charge of the bazooka whose rocket hurts the enemy.
//
//   reach_trial [--level NAME] [--drops N] [--seed S]
//
// One line for the level; exit status 1 when too few pairs are within reach or too many worms have nobody to shoot at.
// Rockets fly as the game's do at 60 frames a second, swept over several frames at a time: within so short a time
// gravity bends their path by a hundredth of a unit. They meet land and worms through the game's own collision service.

#include "core/app/game_loader.h"
#include "core/scene/scene_node.h"
#include "core/services/module_manager.h"
#include "core/teams/team.h"
#include "core/teams/team_manager.h"
#include "game/collision/collision_detection.h"
#include "game/collision/collision_packet.h"
#include "game/play/worm.h"
#include "platform/crt_random.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <CLI/CLI.hpp>

#include <cmath>
#include <cstdio>
#include <optional>
#include <stdexcept>
#include <vector>

namespace {

// What the bazooka and its rocket can do; seconds and world units.
constexpr float frameTime = 1.0f / 60.0f;
constexpr float gravity = 10.0f;
constexpr float lifetime = 5.0f;
constexpr float fastest = 100.0f;
constexpr float muzzleDistance = 3.0f;
constexpr float lowestHeight = -5.0f;
constexpr float steepest = 1.5f; ///< radians
/// Within the blast's radius of 10 by enough to be felt.
constexpr float hurtWithin = 9.9f;

/// Frames that one sweep covers, and sweeps between the flight times that are tried.
constexpr float sweepTime = 6.0f * frameTime;
constexpr float flightTimeStep = 2.0f * sweepTime;

/// The share of pairs that must be within reach, and the share of worms that may have nobody within reach.
constexpr double leastReach = 0.72;
constexpr double mostIdle = 0.08;

/// Where a rocket is after a time of flight, gravity applied frame by frame.
Vector3 pathAt(const Vector3& start, const Vector3& velocity, float time) {
    Vector3 at = start + velocity * time;
    at.y -= 0.5f * gravity * time * (time + frameTime);
    return at;
}

/// Where a rocket goes off; nothing when it is lost below the level.
std::optional<Vector3> explosionOf(const Vector3& start, const Vector3& velocity) {
    CollisionPacket rocket;
    rocket.radius = Vector3(1.0f, 1.0f, 1.0f);
    rocket.worldPosition = start;
    for (float time = 0.0f; time < lifetime; time += sweepTime) {
        rocket.worldVelocity = pathAt(start, velocity, time + sweepTime) - rocket.worldPosition;
        theModuleManager->getCollisionDetection()->moveToContact(&rocket, theModuleManager->getSceneRoot());
        if (rocket.worldPosition.y < lowestHeight)
            return std::nullopt;
        if (rocket.foundCollision)
            break;
    }
    return rocket.worldPosition;
}

struct Shot {
    Vector3 aim; ///< unit
    float speed;
};

/// The shot that is at a target after a time of flight; nothing when the bazooka cannot do it.
std::optional<Shot> shotAt(const Vector3& shooter, const Vector3& target, float time) {
    Shot shot{normalized(target - shooter), 0.0f};
    // The muzzle hangs on the aim.
    for (int i = 0; i < 4; ++i) {
        Vector3 velocity = (target - shooter - shot.aim * muzzleDistance) * (1.0f / time);
        velocity.y += 0.5f * gravity * (time + frameTime);
        shot = {normalized(velocity), velocity.length()};
    }
    if (shot.speed > fastest || std::fabs(shot.aim.y) > std::sin(steepest))
        return std::nullopt;
    return shot;
}

/// Points in and around a worm at which a rocket would hurt it.
std::vector<Vector3> targetsAround(const Vector3& worm) {
    std::vector<Vector3> targets{worm};
    for (const float side : {-8.5f, 8.5f}) {
        for (const Vector3& offset : {Vector3(0, side, 0), Vector3(side, 0, 0), Vector3(0, 0, side)})
            targets.push_back(worm + offset);
        for (const float other : {-5.0f, 5.0f}) {
            for (const float height : {-5.0f, 5.0f})
                targets.push_back(worm + Vector3(0.6f * side, height, other));
        }
    }
    return targets;
}

bool canHurt(const Vector3& shooter, const Vector3& enemy) {
    for (const Vector3& target : targetsAround(enemy)) {
        for (float time = flightTimeStep; time <= lifetime; time += flightTimeStep) {
            const std::optional<Shot> shot = shotAt(shooter, target, time);
            if (!shot)
                continue;
            const auto explosion = explosionOf(shooter + shot->aim * muzzleDistance, shot->aim * shot->speed);
            if (explosion && (*explosion - enemy).length() < hurtWithin)
                return true;
        }
    }
    return false;
}

struct Count {
    int pairs = 0;
    int hurt = 0;
    int shooters = 0;
    int idle = 0;
};

void countShooter(const Worm& shooter, const std::vector<Team*>& teams, Count& count) {
    int victims = 0;
    for (const Team* const team : teams) {
        if (team == shooter.getTeam())
            continue;
        for (const Worm* const enemy : team->getWorms()) {
            ++count.pairs;
            victims += canHurt(shooter.getWorldPosition(), enemy->getWorldPosition()) ? 1 : 0;
        }
    }
    count.hurt += victims;
    ++count.shooters;
    count.idle += victims == 0 ? 1 : 0;
}

void countDrop(const TestServices& services, const std::string& level, Count& count) {
    endRound();
    if (GameLoader().loadLevel(level) == nullptr)
        throw std::runtime_error("level '" + level + "' does not load");
    // The worms come to rest.
    for (int frame = 0; frame < 30; ++frame)
        services.frame(16);
    const std::vector<Team*>& teams = theModuleManager->getTeamManager()->getTeams();
    for (const Team* const team : teams) {
        for (const Worm* const worm : team->getWorms())
            countShooter(*worm, teams, count);
    }
}

} // namespace

int main(int argumentCount, char** values) {
    std::string level = "moorholm";
    int drops = 30;
    unsigned seed = 1;
    CLI::App app("Counts the worms of a level that a bazooka can reach.", "reach_trial");
    app.add_option("--level", level, "as the level list names it");
    app.add_option("--drops", drops, "how often the teams are dropped");
    app.add_option("--seed", seed, "another one drops them elsewhere");
    CLI11_PARSE(app, argumentCount, values);
    try {
        const ShippedData data;
        const TestServices services;
        crtSrand(seed);
        Count count;
        for (int drop = 0; drop < drops; ++drop)
            countDrop(services, level, count);
        endRound();
        theModuleManager->setSceneRoot(new SceneNode("root"));
        if (count.pairs == 0)
            throw std::runtime_error("nobody was dropped");
        const double reach = static_cast<double>(count.hurt) / count.pairs;
        const double idle = static_cast<double>(count.idle) / count.shooters;
        std::printf("%s: %d drops, %d pairs, %.1f %% within reach; %d shooters, %.1f %% of them without a target\n",
                    level.c_str(), drops, count.pairs, 100.0 * reach, count.shooters, 100.0 * idle);
        return reach >= leastReach && idle <= mostIdle ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "reach_trial: %s\n", error.what());
        return 2;
    }
}
