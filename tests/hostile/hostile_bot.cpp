#include "hostile/hostile_bot.h"

#include "core/module_manager.h"
#include "core/team.h"
#include "core/team_manager.h"
#include "game/worm.h"
#include "hostile/inspection.h"
#include "platform/headless/headless.h"
#include "render/texture_manager.h"
#include "support/play.h"
#include "support/world_hash.h"

#include <array>
#include <bit>
#include <cinttypes>
#include <cstdio>
#include <filesystem>

namespace {

/// A round that takes longer will not end; the longest ones take a tenth of it.
constexpr unsigned mostFrames = 40000;
/// Turns after which nothing but the shortest way to the end is taken.
constexpr unsigned patience = 30;
constexpr float straightDown = -1.5f;
/// World units; less is no movement.
constexpr float leastMovement = 0.5f;

constexpr std::array<int, 12> playKeys{'W', 'A', 'S', 'D', VK_SPACE, 'Q', 'E', '1', '2', '3', '4', '5'};
constexpr std::array<int, 10> otherKeys{VK_F2, VK_F3, VK_F4, VK_F5, VK_F6, VK_F7, VK_F8, VK_F9, 'T', VK_RETURN};

/// The game reads a level's textures when the level first comes up and keeps them, which would look like growth.
void readAllTextures() {
    for (const auto& file : std::filesystem::directory_iterator("textures"))
        theModuleManager->getTextureManager()->getTexture(file.path().stem().string());
}

int teamsLeft() {
    return theModuleManager->getTeamManager()->getTeamCount();
}

} // namespace

HostileBot::HostileBot(std::uint64_t seedNumber, unsigned roundCount, bool reportRounds)
    : seed(seedNumber), rounds(roundCount), reporting(reportRounds), random(seedNumber) {}

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
}

void HostileBot::endOfFrame() {
    // What the desktop writes down would count as growth.
    headless::clearSoundCalls();
    headless::clearDefaultedMessages();
    if (framesAfterQuit > 3)
        fail("the game does not end");
    inspect();
    mixFrame();
    chooseFrameTime();
}

void HostileBot::inspect() {
    ++framesOfRound;
    const Worm* const active = world::activeWorm();
    turnsOfRound += active != lastActive ? 1 : 0;
    lastActive = active;
    if (std::string found = inspection::faultOfFrame(); !found.empty())
        fail(found);
    if (framesOfRound > mostFrames)
        fail("the round does not end");
}

void HostileBot::mixFrame() {
    for (const Team* const team : theModuleManager->getTeamManager()->getTeams())
        for (const Worm* const worm : team->getWorms()) {
            const Vector3 position = worm->getPosition();
            for (const float value : {position.x, position.y, position.z, worm->getHealth()})
                mix(std::bit_cast<std::uint32_t>(value));
        }
}

void HostileBot::mix(std::uint64_t value) {
    hash = (hash ^ value) * 1099511628211u;
    hash ^= hash >> 32;
}

void HostileBot::chooseFrameTime() {
    if (burst > 0) {
        --burst;
        headless::setFrameDuration(0);
        return;
    }
    unsigned length = 10 + random.below(31);
    if (!ordinaryFrames) {
        const unsigned kind = random.below(1000);
        if (kind < 15)
            burst = 1 + random.below(30);
        else if (kind < 45)
            length = 100 + random.below(900);
        else if (kind < 55)
            length = 1000 + random.below(9001);
    }
    headless::setFrameDuration(length);
}

void HostileBot::fail(const std::string& what) {
    if (fault.empty())
        fault = whereabouts() + ": " + what;
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
    if (levelName == "unknown")
        fail("a level that is in no list");
    if (const std::string growth = log.growth(); !growth.empty())
        fail(growth);
}

Script HostileBot::playRound() {
    const unsigned wildTurns = random.below(6);
    for (unsigned turn = 0; turn < wildTurns && !isRoundOver(); ++turn)
        co_await playWildTurn();
    co_await finishRound();
    if (!scene->isGone())
        mix(world::stateHash());
    log.end(framesOfRound, turnsOfRound);
    if (reporting) {
        std::printf("%s: %016" PRIx64 "\n", whereabouts().c_str(), hash);
        std::fflush(stdout);
    }
    co_await startNextRound();
}

Script HostileBot::playWildTurn() {
    co_await checkThatTheWormCanMove();
    const unsigned parts = 1 + random.below(4);
    for (unsigned part = 0; part < parts && !isRoundOver(); ++part) {
        if (random.perMille(500))
            co_await playWildly(20 + random.below(60));
        else
            co_await playOneMove();
    }
    releaseEverything();
}

Script HostileBot::playWildly(unsigned frameCount) {
    for (unsigned frame = 0; frame < frameCount && !isRoundOver(); ++frame) {
        for (unsigned count = random.below(3); count > 0; --count)
            causeEvent();
        co_await frames(1);
    }
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
    releaseEverything();
}

Script HostileBot::finishRound() {
    while (!isRoundOver()) {
        ordinaryFrames = turnsOfRound > patience;
        if (random.perMille(turnsOfRound > patience ? 0 : 250))
            co_await walkSomewhere();
        co_await checkThatTheWormCanMove();
        co_await shootOwnFeet();
    }
    ordinaryFrames = false;
}

Script HostileBot::walkSomewhere() {
    const Worm* const worm = world::activeWorm();
    co_await aimAt(0.0f, random.between(-3.0f, 3.0f));
    headless::keyDown('W');
    if (random.perMille(300))
        headless::keyDown(VK_SPACE);
    for (unsigned left = 40; left > 0 && !isRoundOver() && world::activeWorm() == worm; --left)
        co_await frames(1);
    releaseEverything();
}

Script HostileBot::shootOwnFeet() {
    const Worm* const worm = world::activeWorm();
    co_await takeWeapon(0);
    for (unsigned wait = 0; !isRoundOver() && world::activeWorm() == worm && wait < 1000; ++wait) {
        if (wait % 60 == 0) {
            co_await aimAt(straightDown, worm->getYaw());
            co_await pressFire(1);
        }
        co_await frames(1);
    }
}

/// A worm in the ground or in another worm has to get out of it by some of what a player can do.
Script HostileBot::checkThatTheWormCanMove() {
    const Worm* const worm = world::activeWorm();
    if (isRoundOver() || worm == nullptr || !(inspection::isInsideLand(*worm) || inspection::isInsideWorm(*worm)))
        co_return;
    if (reporting)
        std::printf("%s: %s is in the %s\n", whereabouts().c_str(), worm->getWormName().c_str(),
                    inspection::isInsideLand(*worm) ? "ground" : "way of another");
    const bool wereOrdinary = ordinaryFrames;
    ordinaryFrames = true;
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
    ordinaryFrames = wereOrdinary;
    if (!moved)
        fail(worm->getWormName() + " is stuck");
}

Script HostileBot::startNextRound() {
    releaseEverything();
    for (unsigned frame = random.below(30); frame > 0 && !scene->isGone(); --frame) {
        causeEvent();
        co_await frames(1);
    }
    releaseEverything();
    while (!scene->isGone() && fault.empty()) {
        headless::tapKey(VK_RETURN);
        co_await frames(1);
    }
}

void HostileBot::releaseEverything() {
    for (const int key : playKeys)
        headless::keyUp(key);
    headless::leftButton(false);
}

void HostileBot::toggleKey() {
    const int key = playKeys[random.below(playKeys.size())];
    if (random.perMille(500))
        headless::keyDown(key);
    else
        headless::keyUp(key);
}

void HostileBot::nudgeMouse(int farthest) {
    const int right = random.between(-farthest, farthest);
    headless::moveMouse(right, random.between(-farthest, farthest));
}

void HostileBot::resize(int largest) {
    const int width = random.between(0, largest);
    headless::resizeWindow(width, random.between(0, largest));
}

void HostileBot::causeEvent() {
    const unsigned kind = random.below(1000);
    if (kind < 450)
        toggleKey();
    else if (kind < 600)
        headless::leftButton(random.perMille(500));
    else if (kind < 900)
        nudgeMouse(200);
    else if (kind < 910)
        nudgeMouse(1000000);
    else if (kind < 960)
        headless::tapKey(otherKeys[random.below(otherKeys.size())]);
    else
        causeWindowEvent();
}

void HostileBot::causeWindowEvent() {
    switch (random.below(7)) {
    case 0:
        resize(2000);
        break;
    case 1:
        resize(1);
        break;
    case 2:
        headless::post(WM_ACTIVATE, MAKEWPARAM(static_cast<WORD>(random.below(3)), 0));
        break;
    case 3:
        headless::post(WM_SYSCOMMAND, random.perMille(500) ? SC_SCREENSAVE : SC_MONITORPOWER);
        break;
    case 4: {
        // Any key there is and some there are not, but for the one that ends the game.
        const int key = random.between(0, 300);
        if (key != VK_ESCAPE)
            headless::tapKey(key);
        break;
    }
    case 5:
        headless::post(0x8000u + random.below(0x4000u), 1, 1);
        break;
    default:
        minimise();
        break;
    }
}

void HostileBot::minimise() {
    headless::minimiseWindow();
    looksWhileMinimised = 1 + random.below(5);
    headless::onIdle([this] { whileMinimised(); });
}

/// The loop turns without frames now; what comes in is still taken in.
void HostileBot::whileMinimised() {
    if (--looksWhileMinimised > 0) {
        headless::advance(random.below(4000));
        toggleKey();
        headless::leftButton(random.perMille(300));
        nudgeMouse(50);
        return;
    }
    headless::restoreWindow();
    headless::onIdle(nullptr);
}
