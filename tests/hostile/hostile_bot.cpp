#include "hostile/hostile_bot.h"

#include "core/app/game_loader.h"
#include "core/services/module_manager.h"
#include "core/teams/team.h"
#include "core/teams/team_manager.h"
#include "game/armoury/airstrike.h"
#include "game/armoury/beam.h"
#include "game/play/weapon.h"
#include "game/play/worm.h"
#include "hostile/inspection.h"
#include "platform/headless/headless.h"
#include "render/device/texture_manager.h"
#include "support/play.h"
#include "support/world_hash.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace {

/// A round that takes longer will not end; the longest ones take a tenth of it.
constexpr unsigned mostFrames = 40000;
/// Turns after which nothing but the shortest way to the end is taken. It still takes walking: a worm may stand on a
/// rim that its rockets fall past.
constexpr unsigned patience = 30;
/// Rounds in which every weapon is fired and every level played, as good as surely.
constexpr unsigned roundsForEverything = 20;
constexpr unsigned roundsForEveryLevel = 100;
constexpr float straightDown = -1.5f;
/// World units; less is no movement.
constexpr float leastMovement = 0.5f;

/// The game reads a level's textures when the level first comes up and keeps them, which would look like growth.
void readAllTextures() {
    for (const auto& file : std::filesystem::directory_iterator("textures"))
        theModuleManager->getTextureManager()->getTexture(file.path().stem().string());
}

/// Who has the turn, where, and with what; nothing once the game has ended.
std::string stateOfGame() {
    const Worm* const worm = theModuleManager != nullptr ? world::activeWorm() : nullptr;
    if (worm == nullptr)
        return {};
    const Vector3 at = worm->getPosition();
    char line[256];
    std::snprintf(line, sizeof line, "; %s has the turn at (%g, %g, %g)%s, weapon %d", worm->getWormName().c_str(),
                  static_cast<double>(at.x), static_cast<double>(at.y), static_cast<double>(at.z),
                  worm->jumping ? " and flies" : "", worm->weapon != nullptr ? worm->weapon->getWeaponIndex() + 1 : 0);
    return line;
}

int teamsLeft() {
    return theModuleManager->getTeamManager()->getTeamCount();
}

} // namespace

HostileBot::HostileBot(std::uint64_t seedNumber, unsigned roundCount)
    : seed(seedNumber), rounds(roundCount), random(seedNumber), input(random) {}

void HostileBot::play() {
    headless::reset();
    // Half of the games meet the wrap of the tick.
    const auto start = static_cast<DWORD>(random.below(0xFFFFFFFFu));
    headless::setTick(random.perMille(500) ? start : 0u - start % 1000000u);
    headless::setFrameDuration(16);
    Script script = playRounds();
    headless::onFrame([&] {
        endOfFrame();
        if (fault.empty() && !script.isDone())
            script.advance();
        if ((fault.empty() && !script.isDone()) || framesAfterQuit++ > 0)
            return;
        if (seed % 2 == 0)
            headless::closeWindow();
        else
            headless::keyDown(VK_ESCAPE);
    });
    const int status = WinMain(nullptr, nullptr, nullptr, 0);
    headless::onFrame(nullptr);
    headless::onIdle(nullptr);
    endOfGame(status);
}

void HostileBot::endOfGame(int status) {
    if (status < 0)
        fail("the game could not go on");
    if (!(headless::openHandles() == headless::OpenHandles{}))
        fail("the game left something open");
    if (!headless::problems().empty())
        fail(headless::problems().front());
    if (round <= rounds)
        fail("the game ended before its time");
    // A run of some length has to have done everything, or its silence says little.
    if (rounds >= roundsForEverything &&
        (*std::min_element(shots.begin(), shots.end()) == 0 || input.getMinimisations() == 0 ||
         input.getEmptyFrames() == 0 || input.getLongFrames() == 0))
        fail("something was never tried");
    std::vector<std::string> listed;
    readLevelList(listed);
    if (log.countLevels() > listed.size() || (rounds >= roundsForEveryLevel && log.countLevels() < listed.size()))
        fail("a level was never played, or one that is in no list");
}

void HostileBot::print() const {
    log.print();
    std::printf(
        "shots by weapon %u %u %u %u %u, %u minimisations, %u frames of 0 ms, %u of more than 1 s, %u worms in the "
        "ground or in another\n",
        shots[0], shots[1], shots[2], shots[3], shots[4], input.getMinimisations(), input.getEmptyFrames(),
        input.getLongFrames(), wormsInTheWay);
}

void HostileBot::endOfFrame() {
    // What the desktop writes down would count as growth.
    headless::clearSoundCalls();
    headless::clearDefaultedMessages();
    if (framesAfterQuit > 3) {
        fail("the game does not end");
        std::fprintf(stderr, "%s\n", fault.c_str());
        std::_Exit(1);
    }
    inspect();
    for (const Team* const team : theModuleManager->getTeamManager()->getTeams()) {
        for (const Worm* const worm : team->getWorms()) {
            const Vector3 position = worm->getPosition();
            for (const float value : {position.x, position.y, position.z, worm->getHealth()})
                hash.add(value);
        }
    }
    input.chooseFrameTime(pace);
}

void HostileBot::inspect() {
    ++framesOfRound;
    const Worm* const active = world::activeWorm();
    turnsOfRound += active != lastActive ? 1 : 0;
    countShots(active);
    lastActive = active;
    if (std::string found = inspection::faultOfFrame(); !found.empty())
        fail(found);
    if (framesOfRound > mostFrames)
        fail("the round does not end");
}

void HostileBot::countShots(const Worm* active) {
    const Weapon* const weapon = active != nullptr ? active->weapon : nullptr;
    const unsigned fired = weapon != nullptr ? weapon->getShotsFired() : 0;
    if (fired > lastShots)
        shots[static_cast<std::size_t>(weapon->getWeaponIndex())] += fired - lastShots;
    lastShots = fired;
}

void HostileBot::fail(const std::string& what) {
    if (fault.empty())
        fault = whereabouts() + ": " + what + stateOfGame();
}

std::string HostileBot::whereabouts() const {
    char line[160];
    std::snprintf(line, sizeof line, "seed %" PRIu64 ", round %u, frame %u, turn %u, level %s", seed, round,
                  framesOfRound, turnsOfRound, levelName.c_str());
    return line;
}

bool HostileBot::isRoundOver() const {
    return scene->isGone() || teamsLeft() <= 1;
}

Script HostileBot::playRounds() {
    for (round = 1; round <= rounds; ++round) {
        beginRound();
        co_await playRound();
    }
}

void HostileBot::beginRound() {
    if (round == 1)
        readAllTextures();
    scene = std::make_unique<NodeWatch>(*theModuleManager->getSceneRoot());
    framesOfRound = 0;
    turnsOfRound = 0;
    lastActive = nullptr;
    levelName = log.begin(round);
    if (const std::string growth = log.growth(); !growth.empty())
        fail(growth);
}

Script HostileBot::playRound() {
    for (unsigned turn = random.below(6); turn > 0 && !isRoundOver(); --turn)
        co_await playWildTurn();
    co_await finishRound();
    if (!scene->isGone())
        hash.add(world::stateHash());
    log.end(framesOfRound, turnsOfRound);
    std::printf("%s: %016" PRIx64 "\n", whereabouts().c_str(), getHash());
    std::fflush(stdout);
    co_await startNextRound();
}

Script HostileBot::playWildTurn() {
    co_await checkThatTheWormCanMove();
    for (unsigned part = 1 + random.below(4); part > 0 && !isRoundOver(); --part) {
        if (random.perMille(500)) {
            co_await playOneMove();
            continue;
        }
        for (unsigned frame = 20 + random.below(60); frame > 0 && !isRoundOver(); --frame) {
            for (unsigned count = random.below(3); count > 0; --count)
                input.causeEvent();
            co_await frames(1);
        }
    }
    input.releaseEverything();
}

Script HostileBot::playOneMove() {
    const int weapon = random.between(0, 4);
    co_await takeWeapon(weapon);
    const bool targeted = weapon >= 3;
    if (random.perMille(targeted ? 900 : 300))
        headless::keyDown(targeted || random.perMille(300) ? 'E' : 'Q');
    const Worm* const worm = world::activeWorm();
    if (isRoundOver() || worm == nullptr)
        co_return;
    const float pitch = random.between(-1.5f, targeted ? 0.2f : 1.5f);
    co_await aimAt(pitch, worm->getYaw() + random.between(-3.0f, 3.0f));
    co_await pressFire(1 + random.below(60));
    if (random.perMille(700))
        co_await frames(1 + random.below(100));
    input.releaseEverything();
}

Script HostileBot::finishRound() {
    while (!isRoundOver()) {
        pace = turnsOfRound > patience ? Pace::ordinary : Pace::wild;
        if (random.perMille(250))
            co_await walkSomewhere();
        co_await checkThatTheWormCanMove();
        co_await shootOwnFeet();
    }
    pace = Pace::wild;
}

Script HostileBot::walkSomewhere() {
    const Worm* const worm = world::activeWorm();
    co_await aimAt(0.0f, random.between(-3.0f, 3.0f));
    headless::keyDown('W');
    if (random.perMille(300))
        headless::keyDown(VK_SPACE);
    for (unsigned left = 40; left > 0 && !isRoundOver() && world::activeWorm() == worm; --left)
        co_await frames(1);
    input.releaseEverything();
}

/// Mostly with the bazooka, which never runs out; a strike or a stick may end the last worm of a team while more of the
/// same is still in the air.
Script HostileBot::shootOwnFeet() {
    const Worm* const worm = world::activeWorm();
    const bool choosy = turnsOfRound <= patience && random.perMille(300);
    const int weapon = choosy ? random.between(1, 4) : 0;
    const Pace usual = pace;
    if (weapon == Beam::index || weapon == Airstrike::index)
        headless::keyDown('E');
    co_await takeWeapon(weapon);
    for (unsigned wait = 0; !isRoundOver() && world::activeWorm() == worm && wait < 1000; ++wait) {
        if (wait == 150)
            co_await takeWeapon(0);
        if (wait % 60 == 0) {
            pace = usual;
            co_await aimAt(straightDown, worm->getYaw());
            co_await pressFire(1);
            // What follows is waiting, and drawing is most of what a frame costs.
            pace = Pace::hasty;
        }
        co_await frames(1);
    }
    pace = usual;
    input.releaseEverything();
}

/// A worm in the ground or in another worm has to get out of it by some of what a player can do.
Script HostileBot::checkThatTheWormCanMove() {
    const Worm* const worm = world::activeWorm();
    if (isRoundOver() || worm == nullptr || !(inspection::isInsideLand(*worm) || inspection::isInsideWorm(*worm)))
        co_return;
    ++wormsInTheWay;
    const Pace usual = pace;
    pace = Pace::ordinary;
    const Vector3 before = worm->getPosition();
    bool moved = false;
    for (const int key : {int{VK_SPACE}, int{'W'}, int{'S'}, int{'A'}, int{'D'}}) {
        headless::keyDown(key);
        for (unsigned frame = 0; frame < 15 && !moved; ++frame) {
            co_await frames(1);
            moved =
                isRoundOver() || world::activeWorm() != worm || (worm->getPosition() - before).length() > leastMovement;
        }
        headless::keyUp(key);
    }
    pace = usual;
    if (!moved)
        fail(worm->getWormName() + " is stuck");
}

Script HostileBot::startNextRound() {
    input.releaseEverything();
    const unsigned victory = random.below(random.perMille(200) ? 200 : 30);
    for (unsigned frame = 0; frame < victory && !scene->isGone(); ++frame) {
        input.causeEvent();
        co_await frames(1);
    }
    input.releaseEverything();
    while (!scene->isGone() && fault.empty()) {
        headless::tapKey(VK_RETURN);
        co_await frames(1);
    }
}
