#include "hostile/inspection.h"

#include "core/services/module_manager.h"
#include "core/teams/team.h"
#include "core/teams/team_manager.h"
#include "csg/land/csg_object.h"
#include "game/armoury/projectile.h"
#include "game/play/weapon.h"
#include "game/play/worm.h"
#include "platform/headless/headless.h"
#include "render/camera/camera.h"
#include "render/view/hud.h"
#include "support/solids.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

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

/// What must hold, and what to say where it does not.
struct Check {
    bool holds;
    const char* fault;
    float value = 0.0f;
};

std::string firstFault(const std::string& who, std::initializer_list<Check> checks) {
    const auto* const found = std::find_if(checks.begin(), checks.end(), [](const Check& c) { return !c.holds; });
    return found == checks.end() ? "" : who + ' ' + found->fault + ": " + std::to_string(found->value);
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
    const Vector3 position = worm.getPosition();
    const float health = worm.getHealth();
    const float aim = worm.getAimDirection().length();
    const auto isLoose = [&](SceneNode* child) {
        return child != worm.weapon && dynamic_cast<Weapon*>(child) != nullptr;
    };
    const auto& children = worm.getChildren();
    return firstFault(worm.getWormName(),
                      {{isChild(*theModuleManager->getSceneRoot(), &worm), "is in no scene"},
                       {largest(position) < farthest, "is at an impossible place", largest(position)},
                       {position.y >= deathHeight, "lives below the level", position.y},
                       {largest(worm.jumpVelocity) < fastest, "has an impossible velocity", largest(worm.jumpVelocity)},
                       {health >= 0.0f && health <= 100.0f, "has an impossible health", health},
                       {!worm.isActive() || std::fabs(aim - 1.0f) < 0.01f || worm.getYaw() == 0.0f, "aims by", aim},
                       {worm.isActive() || worm.weapon == nullptr, "holds a weapon without having the turn"},
                       {std::none_of(children.begin(), children.end(), isLoose), "carries a weapon beside its hand"}});
}

std::string faultOfTeam(const Team& team) {
    if (team.getWorms().empty())
        return "team " + team.getName() + " is empty";
    for (const auto& entry : team.getWeapons()) {
        const Weapon& weapon = *entry->weapon;
        const unsigned fired = weapon.getShotsFired();
        const unsigned finished = weapon.getProjectilesFinished();
        const std::string who = "weapon " + std::to_string(weapon.getWeaponIndex() + 1) + " of team " + team.getName();
        if (std::string fault = firstFault(who, {{entry->ammo >= -1, "has shots left", static_cast<float>(entry->ammo)},
                                                 {fired <= mostShots, "was fired in a turn", static_cast<float>(fired)},
                                                 {finished <= mostShots, "is gone", static_cast<float>(finished)}});
            !fault.empty())
            return fault;
    }
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
        return std::to_string(active) + " worms have the turn";
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
    return firstFault("the screen", {{cameraKnown, "shows the view of nobody who has the turn"},
                                     {teams.size() < 2 || camera != nullptr, "has no view"},
                                     {listKnown, "shows the weapons of a team that is gone"}});
}

std::string faultOfNodes(const std::vector<Team*>& teams) {
    const std::vector<SceneNode*>& nodes = theModuleManager->getSceneRoot()->getChildren();
    if (nodes.size() > mostNodes)
        return "the scene has " + std::to_string(nodes.size()) + " nodes";
    for (SceneNode* const node : nodes) {
        const auto* const projectile = dynamic_cast<const Projectile*>(node);
        const ProjectileOwner* const owner = projectile != nullptr ? projectile->getOwner() : nullptr;
        const auto owns = [&](const Team* team) {
            return std::any_of(team->getWeapons().begin(), team->getWeapons().end(),
                               [&](const auto& entry) { return entry->weapon.get() == owner; });
        };
        const bool isOwned = owner == nullptr || std::any_of(teams.begin(), teams.end(), owns);
        const float place = largest(node->getPosition());
        if (std::string fault = firstFault(node->getNodeName(), {{place < farthest, "is at an impossible place", place},
                                                                 {isOwned, "belongs to a weapon that is gone"}});
            !fault.empty())
            return fault;
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
