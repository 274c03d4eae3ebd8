#include "core/team.h"

#include "core/input_control.h"
#include "core/module_manager.h"
#include "core/scene_node.h"
#include "core/team_manager.h"
#include "game/airstrike.h"
#include "game/bazooka.h"
#include "game/beam.h"
#include "game/collision_detection.h"
#include "game/collision_packet.h"
#include "game/dynamite.h"
#include "game/shotgun.h"
#include "game/worm.h"
#include "platform/crt_random.h"
#include "render/hud.h"

#include <algorithm>

namespace {

/// How far above the level's highest point worms are dropped from, world units.
constexpr float dropClearance = 20.0f;
/// A drop that ends below this height was not caught by any land.
constexpr float lostHeight = -10.0f;
/// Longer than any level is high.
constexpr float dropDistance = 10000.0f;
constexpr float roughlyPi = 3.14f;

/// 0 to 1, both included.
double randomFraction() {
    return crtRand() / static_cast<double>(crtRandMax);
}

float randomBetween(float low, float extent) {
    return static_cast<float>(static_cast<double>(low) + randomFraction() * static_cast<double>(extent));
}

} // namespace

WeaponEntry::WeaponEntry(std::unique_ptr<Weapon> theWeapon, int theAmmo)
    : weapon(std::move(theWeapon)), ammo(theAmmo) {}

WeaponEntry::~WeaponEntry() = default;

Team::Team(const std::string& teamName, const BoundingBox* levelBox, float r, float g, float b,
           const std::vector<std::string>& wormNames, unsigned wormCount)
    : colour{r, g, b, 1.0f}, name(teamName), input(theModuleManager->getInputControl()) {
    dropWorms(*levelBox, wormNames, wormCount);
    buildWeapons();
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
    probe.radius = Vector3(2.0f, 5.0f, 2.0f);
    probe.worldVelocity = Vector3(0.0f, -dropDistance, 0.0f);
    const float dropHeight = levelBox.max.y + dropClearance;
    const Vector3 extent = levelBox.max - levelBox.min;
    int misses = 0;
    while (worms.size() < wormCount && misses < dropAttemptsPerWorm) {
        const float x = randomBetween(levelBox.min.x, extent.x);
        const float z = randomBetween(levelBox.min.z, extent.z);
        const auto turn = static_cast<float>(randomFraction());
        const float angle = 2.0f * (turn * roughlyPi);
        probe.worldPosition = Vector3(x, dropHeight, z);
        collision->moveToContact(&probe, root);
        if (probe.worldPosition.y < lostHeight) {
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

void Team::buildWeapons() {
    const auto add = [this](std::unique_ptr<Weapon> weapon, int ammo) {
        weapons.push_back(std::make_unique<WeaponEntry>(std::move(weapon), ammo));
    };
    add(std::make_unique<Bazooka>(this), -1);
    add(std::make_unique<Shotgun>(this), 2);
    add(std::make_unique<Dynamite>(this), 1);
    add(std::make_unique<Beam>(this), 1);
    add(std::make_unique<Airstrike>(this), 1);
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
