#include "support/world_hash.h"

#include "core/scene/scene_node.h"
#include "core/services/module_manager.h"
#include "core/teams/team.h"
#include "core/teams/team_manager.h"
#include "csg/land/csg_object.h"
#include "game/play/weapon.h"
#include "game/play/worm.h"
#include "support/hash.h"
#include "support/solids.h"

namespace {

void addTeam(Hash<>& hash, const Team& team) {
    hash.add(team.getName());
    for (const auto& entry : team.getWeapons()) {
        hash.add(entry->ammo);
        hash.add(entry->weapon->getShotsFired());
    }
    for (const Worm* const worm : team.getWorms()) {
        hash.add(worm->getWormName());
        hash.add(worm->getHealth());
        hash.add(worm->getPosition());
        hash.add(worm->jumpVelocity);
        hash.add(worm->getAimDirection());
    }
}

} // namespace

Worm* world::activeWorm() {
    if (const TeamManager* const teams = theModuleManager->getTeamManager())
        for (const Team* const team : teams->getTeams())
            for (Worm* const worm : team->getWorms())
                if (worm->isActive())
                    return worm;
    return nullptr;
}

std::size_t world::landFaces() {
    std::size_t faces = 0;
    for (SceneNode* const node : theModuleManager->getSceneRoot()->getChildren())
        if (const csgObject* const land = node->asCsgNode())
            faces += land->countFaces();
    return faces;
}

std::uint64_t world::stateHash() {
    Hash<> hash;
    if (theModuleManager->getTeamManager() != nullptr)
        for (const Team* const team : theModuleManager->getTeamManager()->getTeams())
            addTeam(hash, *team);
    for (SceneNode* const node : theModuleManager->getSceneRoot()->getChildren()) {
        hash.add(node->getNodeName());
        hash.add(node->getPosition());
        if (const csgObject* const land = node->asCsgNode())
            hash.add(hashOf(*land));
    }
    return hash.get();
}
