#include "core/teams/team.h"

#include "core/scene/scene_node.h"
#include "core/services/input_control.h"
#include "core/services/module_manager.h"
#include "core/teams/team_manager.h"
#include "game/collision/collision_detection.h"
#include "game/collision/collision_packet.h"
#include "game/play/weapon.h"
#include "game/play/world_laws.h"
#include "game/play/worm.h"
#include "platform/crt_random.h"
#include "render/view/hud.h"

#include <algorithm>

namespace {

/// How far above the level's highest point worms are dropped from, world units.
constexpr float dropClearance = 20.0f;
/// Longer than any level is high.
constexpr float dropDistance = 10000.0f;
constexpr float roughlyPi = 3.14f;

float randomBetween(float low, float extent) {
    return static_cast<float>(static_cast<double>(low) + crtRandFraction() * static_cast<double>(extent));
}

} // namespace

Team::Team(const std::string& teamName, const BoundingBox* levelBox, float r, float g, float b,
           const std::vector<std::string>& wormNames, unsigned wormCount, Armoury armoury)
    : colour{r, g, b, 1.0f}, name(teamName), input(theModuleManager->getInputControl()) {
    dropWorms(*levelBox, wormNames, wormCount);
    weapons = armoury(this);
}

Team::~Team() {
    Hud* const hud = theModuleManager->getHud();
    if (hud != nullptr && hud->getWeaponList() == &weapons)
        hud->setWeaponList(nullptr);
    worms.clear();
    while (!weapons.empty())
        weapons.erase(weapons.begin());
}

void Team::dropWorms(const BoundingBox& levelBox, const std::vector<std::string>& wormNames, unsigned wormCount) {
    SceneNode* const root = theModuleManager->getSceneRoot();
    CollisionDetection* const collision = theModuleManager->getCollisionDetection();
    CollisionPacket probe;
    probe.radius = wormBodyRadii;
    probe.worldVelocity = Vector3(0.0f, -dropDistance, 0.0f);
    const float dropHeight = levelBox.max.y + dropClearance;
    const Vector3 extent = levelBox.max - levelBox.min;
    int misses = 0;
    while (worms.size() < wormCount && misses < dropAttemptsPerWorm) {
        const float x = randomBetween(levelBox.min.x, extent.x);
        const float z = randomBetween(levelBox.min.z, extent.z);
        const auto turn = static_cast<float>(crtRandFraction());
        const float angle = 2.0f * (turn * roughlyPi);
        probe.worldPosition = Vector3(x, dropHeight, z);
        collision->moveToContact(&probe, root);
        if (probe.worldPosition.y < deathHeight) {
            ++misses;
            continue;
        }
        const std::size_t before = worms.size();
        const std::string& wormName = wormNames.empty() ? name : wormNames[worms.size() % wormNames.size()];
        auto* const worm = new Worm(wormName, this);
        worm->setPosition(probe.worldPosition);
        worm->setRotationY(angle);
        root->addChild(worm);
        // Listed first: one that comes to rest where worms are lost ends in this very update.
        worms.push_back(worm);
        root->update();
        misses = worms.size() > before ? 0 : misses + 1;
    }
}

Worm* Team::getCurrentWorm() const {
    return worms.empty() ? nullptr : worms.front();
}

void Team::nextWorm() {
    if (worms.empty())
        return;
    worms.front()->setActive(false);
    std::rotate(worms.begin(), worms.begin() + 1, worms.end());
    worms.front()->setActive(true);
}

void Team::removeWorm(Worm* worm) {
    const bool wasActive = worm->isActive();
    const auto found = std::find(worms.begin(), worms.end(), worm);
    if (found != worms.end()) {
        worms.erase(found);
        worm->setActive(false);
        takeWeaponFrom(*worm);
    }
    theModuleManager->getSceneRoot()->deleteChild(worm);
    TeamManager* const manager = theModuleManager->getTeamManager();
    if (wasActive) {
        theModuleManager->getHud()->setWeaponList(nullptr);
        if (Team* const next = manager->nextTeam())
            next->nextWorm();
    }
    if (worms.empty())
        manager->removeTeam(this);
}

void Team::takeWeaponFrom(Worm& worm) {
    Weapon* const held = worm.weapon;
    if (held == nullptr)
        return;
    held->abandonTurn();
    worm.removeChild(held);
    worm.weapon = nullptr;
}

void Team::handleWeaponKeys() {
    for (std::size_t i = 0; i < weapons.size(); ++i)
        if (input->isKeyDown('1' + static_cast<int>(i)) && getCurrentWorm() != nullptr)
            selectWeapon(*weapons[i]);
}

void Team::selectWeapon(WeaponEntry& entry) {
    Worm& worm = *worms.front();
    if (Weapon* const held = worm.weapon) {
        const bool spent = entry.ammo <= 0 && entry.ammo != -1;
        if (held->getShotsFired() != 0 || spent)
            return;
        if (held != entry.weapon.get())
            held->forgetCharge();
        worm.removeChild(held);
        worm.addChild(entry.weapon.get());
    }
    worm.weapon = entry.weapon.get();
}
