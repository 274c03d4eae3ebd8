#include "hostile/inspection.h"

#include "core/module_manager.h"
#include "core/team.h"
#include "core/team_manager.h"
#include "csg/csg_object.h"
#include "game/projectile.h"
#include "game/weapon.h"
#include "game/worm.h"
#include "platform/headless/headless.h"
#include "render/camera.h"
#include "render/hud.h"
#include "support/solids.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

/// No throw carries a worm farther before it is down again: 2900 units per second for less than two minutes.
constexpr float farthest = 5e5f;
constexpr float fastest = 5e3f;
/// Where worms die, world units.
constexpr float deathHeight = -10.0f;
/// The airstrike's, in one turn.
constexpr unsigned mostShots = 5;
/// More nodes than a round of the bot can leave in the scene; each rocket that goes off at once leaves its smoke.
constexpr std::size_t mostNodes = 2000;

std::string text(const char* format, float value) {
    char line[256];
    std::snprintf(line, sizeof line, format, static_cast<double>(value));
    return line;
}

std::string text(const char* format, const std::string& who, float value = 0.0f) {
    char line[256];
    std::snprintf(line, sizeof line, format, who.c_str(), static_cast<double>(value));
    return line;
}

/// The largest magnitude of the components; not a number where one is.
float largest(const Vector3& v) {
    if (!std::isfinite(v.x) || !std::isfinite(v.y) || !std::isfinite(v.z))
        return std::nanf("");
    return std::max({std::fabs(v.x), std::fabs(v.y), std::fabs(v.z)});
}

bool isChild(const SceneNode& parent, const SceneNode* child) {
    const auto& children = parent.getChildren();
    return std::find(children.begin(), children.end(), child) != children.end();
}

std::string faultOfWorm(const Worm& worm) {
    const std::string& name = worm.getWormName();
    if (!isChild(*theModuleManager->getSceneRoot(), &worm))
        return text("%s is in no scene", name);
    const Vector3 position = worm.getPosition();
    if (!(largest(position) < farthest))
        return text("%s is at an impossible place, %g", name, largest(position));
    if (!(position.y >= deathHeight))
        return text("%s lives below the level at %g", name, position.y);
    if (!(largest(worm.jumpVelocity) < fastest))
        return text("%s has an impossible velocity, %g", name, largest(worm.jumpVelocity));
    if (!(worm.getHealth() >= 0.0f && worm.getHealth() <= 100.0f))
        return text("%s has a health of %g", name, worm.getHealth());
    if (worm.isActive() && !(std::fabs(worm.getAimDirection().length() - 1.0f) < 0.01f) && worm.getYaw() != 0.0f)
        return text("%s aims with a length of %g", name, worm.getAimDirection().length());
    if (!worm.isActive() && worm.weapon != nullptr)
        return text("%s holds a weapon without having the turn", name);
    for (SceneNode* const child : worm.getChildren())
        if (dynamic_cast<Weapon*>(child) != nullptr && child != worm.weapon)
            return text("%s carries a weapon that is not in its hand", name);
    return {};
}

std::string faultOfWeapon(const WeaponEntry& entry) {
    const Weapon& weapon = *entry.weapon;
    if (entry.ammo < -1)
        return text("there are %g shots left", static_cast<float>(entry.ammo));
    if (weapon.getShotsFired() > mostShots)
        return text("%g shots were fired in a turn", static_cast<float>(weapon.getShotsFired()));
    if (weapon.getProjectilesFinished() > mostShots)
        return text("%g projectiles are gone", static_cast<float>(weapon.getProjectilesFinished()));
    return {};
}

std::string faultOfTeam(const Team& team) {
    if (team.getWorms().empty())
        return text("team %s is empty", team.getName());
    for (const auto& entry : team.getWeapons())
        if (const std::string fault = faultOfWeapon(*entry); !fault.empty())
            return "weapon " + std::to_string(entry->weapon->getWeaponIndex() + 1) + " of team " + team.getName() +
                   " has miscounted: " + fault;
    for (const Worm* const worm : team.getWorms())
        if (std::string fault = faultOfWorm(*worm); !fault.empty())
            return fault;
    return {};
}

std::string faultOfTeams(const std::vector<Team*>& teams) {
    int active = 0;
    for (const Team* const team : teams) {
        if (std::string fault = faultOfTeam(*team); !fault.empty())
            return fault;
        for (const Worm* const worm : team->getWorms())
            active += worm->isActive() ? 1 : 0;
    }
    if (teams.size() > 1 && (active != 1 || !teams.back()->getCurrentWorm()->isActive()))
        return text("%g worms have the turn", static_cast<float>(active));
    return {};
}

/// What is registered must belong to someone who lives.
std::string faultOfServices(const std::vector<Team*>& teams) {
    const Camera* const camera = theModuleManager->getCamera();
    const WeaponList* const list = theModuleManager->getHud()->getWeaponList();
    bool cameraKnown = camera == nullptr;
    bool listKnown = list == nullptr;
    for (const Team* const team : teams) {
        listKnown = listKnown || list == &team->getWeapons();
        for (const Worm* const worm : team->getWorms())
            cameraKnown = cameraKnown || (worm->isActive() && isChild(*worm, camera));
    }
    if (!cameraKnown)
        return "the view is that of nobody who has the turn";
    if (teams.size() > 1 && camera == nullptr)
        return "there is no view";
    return listKnown ? "" : "the screen shows the weapons of a team that is gone";
}

std::string faultOfNodes(const std::vector<Team*>& teams) {
    const std::vector<SceneNode*>& nodes = theModuleManager->getSceneRoot()->getChildren();
    if (nodes.size() > mostNodes)
        return text("the scene has %g nodes", static_cast<float>(nodes.size()));
    for (SceneNode* const node : nodes) {
        if (!(largest(node->getPosition()) < farthest))
            return text("node %s is at an impossible place, %g", node->getNodeName(), largest(node->getPosition()));
        const auto* const projectile = dynamic_cast<const Projectile*>(node);
        if (projectile == nullptr || projectile->getOwner() == nullptr)
            continue;
        const auto owns = [&](const Team* team) {
            return std::any_of(team->getWeapons().begin(), team->getWeapons().end(),
                               [&](const auto& entry) { return entry->weapon.get() == projectile->getOwner(); });
        };
        if (std::none_of(teams.begin(), teams.end(), owns))
            return "a projectile belongs to a weapon that is gone";
    }
    return {};
}

} // namespace

std::string inspection::faultOfFrame() {
    if (!headless::problems().empty())
        return headless::problems().front();
    if (!headless::messageBoxes().empty())
        return "a message box: " + headless::messageBoxes().front().text;
    const std::vector<Team*>& teams = theModuleManager->getTeamManager()->getTeams();
    for (const auto check : {faultOfTeams, faultOfServices, faultOfNodes})
        if (std::string fault = check(teams); !fault.empty())
            return fault;
    return {};
}

bool inspection::isInsideLand(const Worm& worm) {
    const Vector3 centre = worm.getPosition();
    const auto holds = [&](const csgObject& land, double shift) {
        const auto column =
            columnOf(land, static_cast<double>(centre.x) + shift, static_cast<double>(centre.z) - 0.7 * shift);
        return std::any_of(column.begin(), column.end(), [&](const auto& stretch) {
            return stretch.first < static_cast<double>(centre.y) && static_cast<double>(centre.y) < stretch.second;
        });
    };
    for (SceneNode* const node : theModuleManager->getSceneRoot()->getChildren())
        if (const csgObject* const land = node->asCsgNode())
            if (holds(*land, -0.05) && holds(*land, 0.0) && holds(*land, 0.05))
                return true;
    return false;
}

bool inspection::isInsideWorm(const Worm& worm) {
    const Vector3 radius(2.0f, 5.0f, 2.0f);
    for (const Team* const team : theModuleManager->getTeamManager()->getTeams())
        for (const Worm* const other : team->getWorms()) {
            const Vector3 offset = (other->getPosition() - worm.getPosition()) / radius;
            if (other != &worm && offset.length() < 1.9f)
                return true;
        }
    return false;
}
